#include "chosen_viewer.h"

#include <array>

#include "olh/support.h"
#include "shared.h"

namespace olh {

namespace {

std::string stored_choice(OlhViewer viewer) {
  std::array<char, OLH_BUFFER_SIZE> home{};
  if (GetHomeDirectory(home.data()) != 1) return "";
  const OptionFile file = read_option_file(user_option_file());
  return viewer == OLH_VIEWER_HTML ? file.browser : file.reader;
}

std::string choice_in_variable(OlhViewer viewer) {
  std::array<char, OLH_BUFFER_SIZE> value{};
  if (GetOlhVariable(value.data(), kind_of(viewer).key) != 1) return "";
  dirslash(value.data());
  return value.data();
}

}  // namespace

ChosenViewer choose_viewer(OlhViewer viewer, const std::string& tree_program, const std::string& tree_file) {
  std::array<char, OLH_BUFFER_SIZE> buffer{};
  const auto get = viewer == OLH_VIEWER_HTML ? OlhBrowserGetPath : OlhAcroGetViewerPath;
  if (get(buffer.data(), tree_program.c_str()) != OLH_RESULT_OK) return {};
  const std::string program = buffer.data();
  if (program == stored_choice(viewer)) return {program, "option_file", user_option_file()};
  if (program == choice_in_variable(viewer)) return {program, "variable", kind_of(viewer).key};
  if (program == tree_program) return {program, "tree", tree_file};
  return {program, "search", "PATH"};
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
  if (roots.roots.empty()) return choose_viewer(kind.viewer, "", "");
  const SearchRoot& first = roots.roots.front();
  return kind.viewer == OLH_VIEWER_HTML ? choose_viewer(kind.viewer, first.browser, first.browser_from)
                                        : choose_viewer(kind.viewer, first.reader, first.reader_from);
}

}  // namespace olh
