#include "chosen_viewer.h"

#include <algorithm>
#include <array>

#include "olh/support.h"
#include "option_file.h"

namespace olh {

namespace {

const char* variable_of(OlhViewer viewer) {
  return viewer == OLH_VIEWER_HTML ? "QEL_HTML_BROWSER" : "QEL_PDF_READER";
}

std::string stored_choice(OlhViewer viewer) {
  std::array<char, OLH_BUFFER_SIZE> home{};
  if (GetHomeDirectory(home.data()) != 1) return "";
  const OptionFile file = read_option_file(user_option_file());
  return viewer == OLH_VIEWER_HTML ? file.browser : file.reader;
}

std::string choice_in_variable(OlhViewer viewer) {
  std::array<char, OLH_BUFFER_SIZE> value{};
  if (GetOlhVariable(value.data(), variable_of(viewer)) != 1) return "";
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
  if (program == choice_in_variable(viewer)) return {program, "variable", variable_of(viewer)};
  if (program == tree_program) return {program, "tree", tree_file};
  return {program, "search", "PATH"};
}

std::string describe(const ChosenViewer& viewer) {
  if (viewer.program.empty()) return "none";
  return viewer.program + (viewer.choice == "search" ? " (found along PATH)" : " (" + viewer.from + ")");
}

bool misunderstands_remote(const std::string& program) {
  constexpr std::array kNames = {"firefox", "firefox-esr", "chromium", "google-chrome", "x-www-browser"};
  const std::string name = program.substr(program.rfind('/') + 1);
  return std::find(kNames.begin(), kNames.end(), name) != kNames.end();
}

}  // namespace olh
