#include "viewer_sources.h"

#include <array>

#include "olh/support.h"
#include "shared.h"

namespace olh {

namespace {

// The directories that the launchers search, under a name that search_path can be given.
constexpr const char* kDirectories = "olh_search_directories";

ViewerSource of_option_file(const ViewerKind& kind) {
  std::array<char, OLH_BUFFER_SIZE> home{};
  const std::string file = user_option_file();
  if (GetHomeDirectory(home.data()) != 1) return {"option_file", file, "", ""};
  const OptionFile stored = read_option_file(file);
  return {"option_file", file, written_value(file, kind.key),
          kind.viewer == OLH_VIEWER_HTML ? stored.browser : stored.reader};
}

ViewerSource of_variable(const ViewerKind& kind) {
  std::array<char, OLH_BUFFER_SIZE> value{};
  GetOlhVariable(value.data(), kind.key);
  dirslash(value.data());
  return {"variable", kind.key, value.data(), executable_named(value.data()).empty() ? "" : value.data()};
}

ViewerSource of_tree(const ViewerKind& kind, const SearchRoots& roots) {
  if (roots.roots.empty()) return {"tree", "", "", ""};
  const SearchRoot& first = roots.roots.front();
  const bool is_browser = kind.viewer == OLH_VIEWER_HTML;
  const std::string& program = is_browser ? first.browser : first.reader;
  const std::string& from = is_browser ? first.browser_from : first.reader_from;
  if (!program.empty()) return {"tree", from, program, program};
  const std::string file = tree_options_file(roots);
  return {"tree", file, is_url(file.c_str()) == 1 ? "" : written_value(file, kind.key), ""};
}

// As the launchers search: the first of these names, each in all directories.
ViewerSource of_search(const ViewerKind& kind) {
  const bool is_browser = kind.viewer == OLH_VIEWER_HTML;
  const VariableForNow directories(
      kDirectories, variable("PATH") + (is_browser ? ":/usr/bin:/usr/local/bin" : ":/bin:/usr/bin:/usr/local/bin"));
  std::array<char, OLH_BUFFER_SIZE> found{};
  for (const char* name :
       {is_browser ? "firefox" : "acroread", is_browser ? "mozilla" : "", is_browser ? "netscape" : ""})
    if (search_path(found.data(), name, kDirectories) == 1) break;
  return {"search", "PATH", found.data(), found.data()};
}

}  // namespace

std::vector<ViewerSource> viewer_sources(const ViewerKind& kind, const SearchRoots& roots) {
  return {of_option_file(kind), of_variable(kind), of_tree(kind, roots), of_search(kind)};
}

}  // namespace olh
