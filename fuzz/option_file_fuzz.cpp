// An option file that anybody may have written, in which a value is set: every other line of it stays, and where the INI
// reader could read the old file it reads the value back from the new one.
#include <iniparser.h>
#include <unistd.h>

#include <cstdint>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "expect.h"
#include "olh/support.h"

namespace {

constexpr char kValue[] = "/a value";
constexpr const char* kKeys[] = {":qel_html_browser", ":qel_pdf_reader"};

const std::string& home() {
  static const std::string directory = [] {
    std::string pattern = "/tmp/olh-fuzz-XXXXXX";
    expect(mkdtemp(pattern.data()) != nullptr, "a scratch directory");
    setenv("HOME", pattern.c_str(), 1);
    return pattern;
  }();
  return directory;
}

void write(const std::string& path, std::string_view text) {
  std::ofstream(path, std::ios::binary).write(text.data(), static_cast<std::streamsize>(text.size()));
}

std::string read(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// The value that the INI reader finds; null for none, and for a file that it gives up.
std::string value_in(const std::string& path, const char* key, bool& readable) {
  dictionary* options = iniparser_load(path.c_str());
  readable = options != nullptr;
  const char* found = readable ? iniparser_getstring(options, key, nullptr) : nullptr;
  std::string value = found == nullptr ? "" : found;
  if (readable) iniparser_freedict(options);
  return value;
}

int quiet(const char*, ...) { return 0; }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  iniparser_set_error_callback(quiet);
  const int key = 1 + data[0] % 2;
  const std::string_view old(reinterpret_cast<const char*>(data) + 1, size - 1);
  const std::string path = home() + "/.qel_viewer_config.ini";
  write(path, old);
  bool readable = false;
  value_in(path, kKeys[key - 1], readable);

  expect(SetIniFile(key, kValue, 1) == OLH_RESULT_OK, "the value is set");
  const std::string once = read(path);
  // Not where the reader itself would not look for a line that is added: inside a section, behind a line that goes on,
  // behind a NUL; nor where it passes over one last character that has no line feed.
  const bool plain = old.find_first_of(std::string_view("[\\\0", 3)) == std::string_view::npos &&
                     (old.empty() || old.ends_with('\n'));
  if (readable && plain) {
    const std::string value = value_in(path, kKeys[key - 1], readable);
    expect(readable, "a readable file stays readable");
    expect(value == kValue, "the value is read back");
  }
  expect(SetIniFile(key, kValue, 1) == OLH_RESULT_OK && read(path) == once, "setting it again changes nothing");
  return 0;
}
