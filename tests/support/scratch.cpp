#include "scratch.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "olh/support.h"

extern char** environ;

namespace olh_test {

namespace fs = std::filesystem;

namespace {

void forget_variables() {
  std::vector<std::string> names;
  for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
    const std::string text(*entry);
    if (text.rfind("QEL_", 0) == 0 || text.rfind("OLH_", 0) == 0 || text.rfind("TRV_", 0) == 0)
      names.push_back(text.substr(0, text.find('=')));
  }
  for (const std::string& name : names) unsetenv(name.c_str());
}

std::string next_field(const std::string& log, std::size_t& position) {
  const std::size_t end = log.find('\0', position);
  std::string field = log.substr(position, end - position);
  position = end == std::string::npos ? log.size() : end + 1;
  return field;
}

}  // namespace

std::string beside_program(const std::string& name) {
  return fs::read_symlink("/proc/self/exe").parent_path() / name;
}

std::string read_file(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream bytes;
  bytes << file.rdbuf();
  return bytes.str();
}

std::string standard_error_of(const std::function<void()>& work) {
  testing::internal::CaptureStderr();
  work();
  return testing::internal::GetCapturedStderr();
}

void Recorder::rule(const char* suffix, int status, int seconds, const std::string& text) const {
  std::ofstream(path + suffix) << status << ' ' << seconds << '\n' << text;
}

std::vector<Invocation> Recorder::invocations() const {
  const std::string log = read_file(path + ".log");
  std::vector<Invocation> calls;
  for (std::size_t position = 0; position < log.size();) {
    Invocation call;
    for (int left = std::atoi(next_field(log, position).c_str()); left > 0; --left)
      call.arguments.push_back(next_field(log, position));
    call.open_descriptors = next_field(log, position);
    call.ignored_signals = next_field(log, position);
    call.blocked_signals = next_field(log, position);
    calls.push_back(std::move(call));
  }
  return calls;
}

std::vector<Words> Recorder::arguments() const {
  std::vector<Words> all;
  for (Invocation& call : invocations()) all.push_back(std::move(call.arguments));
  return all;
}

Scratch::Scratch() {
  std::string pattern = (fs::temp_directory_path() / "olh-test-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no scratch directory");
  dir = fs::canonical(pattern).string();
  home = make_directory("home");
  bin = make_directory("bin");
  forget_variables();
  set("HOME", home);
  set("PATH", bin + ":/usr/bin:/bin");
  // For the stand-ins, which are not what is tested: to look for leaks takes them most of their time.
  set("ASAN_OPTIONS", "detect_leaks=0");
}

Scratch::~Scratch() {
  std::error_code ignored;
  fs::remove_all(dir, ignored);
}

std::string Scratch::write(const std::string& relative, std::string_view text) const {
  const fs::path path = fs::path(dir) / relative;
  fs::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary) << text;
  return path.string();
}

std::string Scratch::make_directory(const std::string& relative) const {
  const fs::path path = fs::path(dir) / relative;
  fs::create_directories(path);
  return path.string();
}

std::string Scratch::make_root(const std::string& relative) const {
  make_directory(relative + "/pdfdocs");
  return dir + "/" + relative;
}

std::string Scratch::make_program(const std::string& relative, std::string_view text) const {
  const std::string path = write(relative, text);
  fs::permissions(path, fs::perms::owner_all);
  return path;
}

std::string Scratch::make_fifo(const std::string& relative) const {
  const fs::path path = fs::path(dir) / relative;
  fs::create_directories(path.parent_path());
  if (mkfifo(path.c_str(), 0600) != 0) throw std::runtime_error("no FIFO");
  return path.string();
}

Recorder Scratch::add_viewer(const std::string& name, const std::string& directory) const {
  const std::string path = make_directory(directory) + "/" + name;
  fs::copy_file(beside_program("olh-recorder"), path);
  return Recorder(path);
}

void Scratch::set(const char* name, const std::string& value) { setenv(name, value.c_str(), 1); }
void Scratch::unset(const char* name) { unsetenv(name); }

std::string Scratch::shortened(std::string text) const {
  for (std::size_t at = text.find(dir); at != std::string::npos; at = text.find(dir))
    text.replace(at, dir.size(), "@");
  return text;
}

std::string Scratch::debug_lines_of(const std::function<void()>& work) const {
  set("OLH_DEBUG", "1");
  setDebugVariable();
  std::string said = standard_error_of(work);
  unset("OLH_DEBUG");
  setDebugVariable();
  return shortened(std::move(said));
}

}  // namespace olh_test
