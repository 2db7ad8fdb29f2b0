// An option file that anybody may have written, in which a value is set: where the INI reader could read the old file it
// can read the new one, gives the value back from it, and finds the other keys as they were.
#include <iniparser.h>

#include "fuzz.h"
#include "olh/support.h"

namespace {

constexpr char kValue[] = "/a value";
constexpr const char* kNames[] = {"QEL_HTML_BROWSER", "QEL_PDF_READER"};
constexpr const char* kKeys[] = {":qel_html_browser", ":qel_pdf_reader", ":qel_alt_doc_path"};

// The values that the INI reader finds, "" for none; no value at all of a file that it gives up.
std::vector<std::string> values_in(const std::string& path) {
  std::vector<std::string> values;
  dictionary* options = iniparser_load(path.c_str());
  if (options == nullptr) return values;
  for (const char* const key : kKeys) values.emplace_back(iniparser_getstring(options, key, ""));
  iniparser_freedict(options);
  return values;
}

bool has(std::string_view text, std::string_view part) { return text.find(part) != std::string_view::npos; }

int quiet(const char*, ...) { return 0; }

}  // namespace

void try_input(const std::string& input) {
  if (input.empty()) return;
  iniparser_set_error_callback(quiet);
  const std::size_t key = static_cast<unsigned char>(input[0]) % 2;
  const std::string old = input.substr(1);
  setenv("HOME", scratch().c_str(), 1);
  const std::string path = scratch() + "/.qel_viewer_config.ini";
  write_file(path, old);
  const std::vector<std::string> before = values_in(path);

  const int code = static_cast<int>(key) + 1;
  expect(SetIniFile(code, kValue, 1) == OLH_RESULT_OK, "the value is set");
  const std::string once = read_file(path);
  const std::vector<std::string> after = values_in(path);
  // For the INI reader a line ends at a NUL.
  if (!before.empty() && !has(old, std::string_view("\0", 1))) {
    expect(!after.empty(), "a readable file stays readable");
    // Not where the reader itself would not look for a line that is added, inside a section; nor where the key's name
    // may be spread over two lines, so that the old value comes behind the new one.
    const bool named = has(old, kNames[key]);
    if (!has(old, "[") && !(named && has(old, "\\"))) expect(after[key] == kValue, "the value is read back");
    for (std::size_t other = 0; other < std::size(kKeys); ++other)
      expect(named || other == key || after[other] == before[other], "another key keeps its value");
  }
  expect(SetIniFile(code, kValue, 1) == OLH_RESULT_OK && read_file(path) == once, "setting it again changes nothing");
}
