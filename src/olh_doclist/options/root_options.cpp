// What makes a directory or URL a documentation root, and what its options file adds to the search path.
//
// Knows    the names inside a root, and that an override counts only when it is an executable.
// Not      how a URL is asked (url_probe), how a value with several roots splits (path_string).
// For      path_string and path_sources of this room.
#include "root_options.h"

#include <cstring>
#include <string>

#include "bounded_text.h"
#include "directory_list.h"
#include "olh/support.h"
#include "option_dictionary.h"
#include "path_string.h"

namespace olh {

namespace {

// A directory is a root when one of these is readable in it; a URL, when one of its two answers.
constexpr const char* kInsideDirectory[] = {"htmldocs", "pdfdocs", kRootOptionsName, "system_admin_docs"};
constexpr const char* kBehindUrl[] = {"/htmldocs/qelhelp.htm", "/tomedecks/index.html"};

bool answers_as_root(olh_docList& locator, const std::string& url) {
  for (const char* const page : kBehindUrl)
    if (locator.ValidURL((url + page).c_str()) == 1) return true;
  return false;
}

bool contains_docs(std::string_view directory) {
  for (const char* const name : kInsideDirectory)
    if (path_exists(path_in(directory, name).c_str()) == 1) return true;
  return false;
}

bool is_web_address(std::string_view path) noexcept {
  return path.starts_with("http://") || path.starts_with("https://");
}

// The value of a key, "" when absent, after it has been shown under the name that the key has in the file.
const char* shown_value(const OptionDictionary& options, const char* key, const char* shown_name) {
  const char* const value = options.value_of(key);
  if (is_empty(value)) return "";
  print_debug("olh_docList::ReadQelDocOptions: %s=%s\n", shown_name, value);
  return value;
}

// The same for a program.
const char* override_of(const OptionDictionary& options, const char* key, const char* shown_name) {
  const char* const program = shown_value(options, key, shown_name);
  return exe_exists(program) == 1 ? program : "";
}

}  // namespace

void add_roots_of_options(olh_docList& locator, const char* file, PathListEnd& end) {
  print_debug("olh_docList::ReadQelDocOptions\n");
  std::string holding_root(text_of(file));
  const OptionDictionary options(file);
  if (!options) {
    print_debug("olh_docList::ReadQelDocOptions: cannot parse file: %s\n", holding_root.c_str());
    return;
  }
  print_debug("olh_docList::ReadQelDocOptions: %s\n", file);
  const char* const alternates = shown_value(options, kAltDocPathKey, "QEL_ALT_DOC_PATH");
  remove_leaf(holding_root.data());
  holding_root.resize(std::strlen(holding_root.c_str()));
  RootOrigin origin = {.html = override_of(options, kHtmlBrowserKey, "QEL_HTML_BROWSER"),
                       .pdf = override_of(options, kPdfReaderKey, "QEL_PDF_READER"),
                       .parent = holding_root};
  split_roots(locator, alternates, origin, end);
  origin.parent = {};
  split_roots(locator, holding_root, origin, end);
  print_debug("olh_docList::ReadQelDocOptions: done\n");
}

}  // namespace olh

int olh_docList::ReadQelDocOptions(const char* file) {
  olh::PathListEnd end(mDocPathList);
  olh::add_roots_of_options(*this, file, end);
  return OLH_RESULT_OK;
}

int olh_docList::ValidDocPath(const char* path) {
  if (olh::is_empty(path)) {
    print_debug("olh_docList::ValidDocPath: failed: invalid args\n");
    return 0;
  }
  print_debug("olh_docList::ValidDocPath: %s\n", path);
  const bool on_the_web = olh::is_web_address(path);
  if (!on_the_web && path_exists(path) == 0) {
    print_debug("olh_docList::ValidDocPath: failed: path does not exist\n");
    return 0;
  }
  if (on_the_web ? olh::answers_as_root(*this, path) : olh::contains_docs(path)) {
    print_debug("olh_docList::ValidDocPath: done\n");
    return 1;
  }
  print_debug("olh_docList::ValidDocPath: failed: path does not contain docs\n");
  return 0;
}
