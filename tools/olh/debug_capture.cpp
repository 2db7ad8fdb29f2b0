#include "debug_capture.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <sstream>
#include <system_error>

#include "environment.h"
#include "olh/support.h"

namespace olh {

namespace {

// Standard error, turned into a file in memory until it is destroyed.
class StandardErrorInMemory {
 public:
  StandardErrorInMemory() : file_(memfd_create("olh-debug-lines", MFD_CLOEXEC)), former_(dup(STDERR_FILENO)) {
    std::fflush(stderr);
    if (file_ < 0 || dup2(file_, STDERR_FILENO) < 0) fail();
  }
  StandardErrorInMemory(const StandardErrorInMemory&) = delete;
  StandardErrorInMemory& operator=(const StandardErrorInMemory&) = delete;
  ~StandardErrorInMemory() {
    give_back();
    close(file_);
  }

  // Ends the redirection and returns what was written.
  std::string text() {
    give_back();
    std::string all;
    char block[4096];
    for (ssize_t size = 0; (size = pread(file_, block, sizeof block, static_cast<off_t>(all.size()))) > 0;)
      all.append(block, static_cast<std::size_t>(size));
    return all;
  }

 private:
  void give_back() {
    std::fflush(stderr);
    if (given_back_) return;
    given_back_ = true;
    if (former_ < 0) {
      close(STDERR_FILENO);  // it was closed before
    } else {
      dup2(former_, STDERR_FILENO);
      close(former_);
    }
  }

  [[noreturn]] void fail() {
    const int reason = errno;
    if (former_ >= 0) close(former_);
    if (file_ >= 0) close(file_);
    throw std::system_error(reason, std::generic_category(), "the library's debug lines cannot be kept");
  }

  int file_;
  int former_;
  bool given_back_ = false;
};

// Debug lines are on in this scope, whatever the user chose.
class DebugLinesForNow {
 public:
  DebugLinesForNow() { setDebugVariable(); }
  ~DebugLinesForNow() {
    variable_.reset();
    setDebugVariable();
  }
  DebugLinesForNow(const DebugLinesForNow&) = delete;
  DebugLinesForNow& operator=(const DebugLinesForNow&) = delete;

 private:
  std::optional<VariableForNow> variable_{std::in_place, "OLH_DEBUG", "1"};
};

}  // namespace

std::vector<std::string> debug_lines_of(const std::function<void()>& work) {
  const bool wanted = !variable("OLH_DEBUG").value_or("").empty();
  std::string text;
  {
    StandardErrorInMemory memory;
    {
      const DebugLinesForNow on;
      work();
    }
    text = memory.text();
  }
  if (wanted) std::fputs(text.c_str(), stderr);
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

}  // namespace olh
