// The fixture of all tests: a directory of its own, a clean environment, viewers that note how they are called, and what the
// library says in its debug output.
#ifndef OLH_TESTS_SCRATCH_H
#define OLH_TESTS_SCRATCH_H

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace olh_test {

using Words = std::vector<std::string>;

// One call of a recording viewer.
struct Invocation {
  Words arguments;
  std::string open_descriptors;  // above 2, each followed by a blank
  std::string ignored_signals;   // the masks of /proc/self/status
  std::string blocked_signals;
};

// A recording viewer under a name of the test's choice.
class Recorder {
 public:
  explicit Recorder(std::string program_path) : path(std::move(program_path)) {}
  // How it answers from now on. Without these a ping finds nothing running, and everything else ends at once
  // with 0.
  void on_ping(int status, const std::string& text) const { rule(".ping", status, 0, text); }
  void on_remote(int status) const { rule(".remote", status, 0, ""); }
  void on_start(int status, int seconds_to_stay = 0) const { rule(".start", status, seconds_to_stay, ""); }
  std::vector<Invocation> invocations() const;
  // Their arguments alone.
  std::vector<Words> arguments() const;

  std::string path;

 private:
  void rule(const char* suffix, int status, int seconds, const std::string& text) const;
};

// Whatever `work` writes to standard error.
std::string standard_error_of(const std::function<void()>& work);
// A file in the directory of the test program, where what the tests need is found.
std::string beside_program(const std::string& name);
// A file's bytes; "" when it cannot be read.
std::string read_file(const std::string& path);

// HOME is `home`, PATH is `bin` and the system's two directories, no QEL_, OLH_ or TRV_ variable is set.
class Scratch : public ::testing::Test {
 protected:
  Scratch();
  ~Scratch() override;

  // Writes a file below the directory, with the directories that it needs. Returns its full path.
  std::string write(const std::string& relative, std::string_view text) const;
  // Makes a directory below the directory. Returns its full path.
  std::string make_directory(const std::string& relative) const;
  // A documentation root: a directory that holds "pdfdocs". Returns its full path.
  std::string make_root(const std::string& relative) const;
  // An executable file, which does nothing but exist unless a text is given.
  std::string make_program(const std::string& relative, std::string_view text = "#!/bin/sh\n") const;
  std::string make_fifo(const std::string& relative) const;
  // A recording viewer in `bin`, or at another place below the directory.
  Recorder add_viewer(const std::string& name, const std::string& directory = "bin") const;

  static void set(const char* name, const std::string& value);
  static void unset(const char* name);

  // A text with "@" in the place of the directory.
  std::string shortened(std::string text) const;
  // The debug output of `work`, shortened.
  std::string debug_lines_of(const std::function<void()>& work) const;

  std::string dir;
  std::string home;
  std::string bin;
};

}  // namespace olh_test

#endif
