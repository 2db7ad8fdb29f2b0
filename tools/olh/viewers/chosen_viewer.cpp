#include "chosen_viewer.h"

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

ViewerSource of_tree(const std::string& program, const std::string& file) { return {"tree", file, program, program}; }

// What the tree of the first root prescribes.
ViewerSource of_first_tree(const ViewerKind& kind, const SearchRoots& roots) {
  if (roots.roots.empty()) return of_tree("", "");
  const SearchRoot& first = roots.roots.front();
  return kind.viewer == OLH_VIEWER_HTML ? of_tree(first.browser, first.browser_from)
                                        : of_tree(first.reader, first.reader_from);
}

// The same, and what its file names in vain.
ViewerSource of_first_tree_in_full(const ViewerKind& kind, const SearchRoots& roots) {
  ViewerSource tree = of_first_tree(kind, roots);
  if (roots.roots.empty() || !tree.program.empty()) return tree;
  tree.from = tree_options_file(roots);
  if (!is_web_root(tree.from)) tree.value = written_value(tree.from, kind.key);
  return tree;
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

ChosenViewer choose_viewer(OlhViewer viewer, const std::string& tree_program, const std::string& tree_file) {
  std::array<char, OLH_BUFFER_SIZE> program{};
  const auto get = viewer == OLH_VIEWER_HTML ? OlhBrowserGetPath : OlhAcroGetViewerPath;
  if (get(program.data(), tree_program.c_str()) != OLH_RESULT_OK) return {};
  const ViewerKind& kind = kind_of(viewer);
  for (const ViewerSource& source : {of_option_file(kind), of_variable(kind), of_tree(tree_program, tree_file)})
    if (source.program == program.data()) return {source.program, source.choice, source.from};
  return {program.data(), "search", "PATH"};
}

ChosenViewer settle_viewer(OlhViewer viewer, const std::string& tree_program, const std::string& tree_file) {
  ChosenViewer chosen = choose_viewer(viewer, tree_program, tree_file);
  if (chosen.choice == "option_file" || chosen.choice == "variable") return chosen;
  const std::string adapter = installed_adapter(kind_of(viewer));
  if (chosen.choice != "tree" && !adapter.empty()) chosen = {adapter, "olh", "nobody has chosen one"};
  if (!chosen.program.empty())
    viewer == OLH_VIEWER_HTML ? OlhBrowserSetPath(chosen.program.c_str()) : OlhAcroSetPath(chosen.program.c_str());
  return chosen;
}

std::string describe(const ChosenViewer& viewer) {
  if (viewer.program.empty()) return "none";
  return viewer.program + (viewer.choice == "search" ? " (found along PATH)" : " (" + viewer.from + ")");
}

ChosenViewer viewer_in_use(const ViewerKind& kind, const SearchRoots& roots) {
  const ViewerSource tree = of_first_tree(kind, roots);
  return choose_viewer(kind.viewer, tree.program, tree.from);
}

std::vector<ViewerSource> viewer_sources(const ViewerKind& kind, const SearchRoots& roots) {
  return {of_option_file(kind), of_variable(kind), of_first_tree_in_full(kind, roots), of_search(kind)};
}

}  // namespace olh
