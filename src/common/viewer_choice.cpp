#include "viewer_choice.h"

#include <cstdlib>
#include <cstring>
#include <new>

#include "bounded_text.h"
#include "olh/support.h"

namespace olh {

namespace {

std::string empty_buffer() { return std::string(OLH_BUFFER_SIZE, '\0'); }

std::string choice_in_options_file(OlhViewer viewer) {
  std::string home = empty_buffer();
  if (GetHomeDirectory(home.data()) != 1) return "";
  home.resize(std::strlen(home.c_str()));
  std::string file = home + "/." + kViewerOptionsName;
  std::string other = empty_buffer();
  std::string browser = empty_buffer();
  std::string reader = empty_buffer();
  ReadIniFile(file.data(), other.data(), browser.data(), reader.data());
  return viewer == OLH_VIEWER_HTML ? browser.c_str() : reader.c_str();
}

bool names_a_program(const std::string& name) {
  if (name.empty()) return false;
  if (name.find('/') != std::string::npos) return exe_exists(name.c_str()) == 1;
  std::string found = empty_buffer();
  return search_path(found.data(), name.c_str(), nullptr) == 1;
}

std::string choice_in_variable(OlhViewer viewer) {
  std::string value = empty_buffer();
  const char* variable = viewer == OLH_VIEWER_HTML ? "QEL_HTML_BROWSER" : "QEL_PDF_READER";
  if (GetOlhVariable(value.data(), variable) != 1) return "";
  dirslash(value.data());
  value.resize(std::strlen(value.c_str()));
  return names_a_program(value) ? value : "";
}

}  // namespace

void FreeViewerPaths::operator()(OlhViewerPaths* paths) const noexcept {
  std::free(paths->overridePath);
  std::free(paths->defaultPath);
  std::free(paths);
}

ViewerPaths make_viewer_paths() {
  ViewerPaths paths(static_cast<OlhViewerPaths*>(std::calloc(1, sizeof(OlhViewerPaths))));
  if (paths == nullptr) throw std::bad_alloc();
  return paths;
}

void replace_path(char*& path, const char* value) {
  char* const copy = strdup(value);
  if (copy == nullptr) throw std::bad_alloc();
  std::free(path);
  path = copy;
}

UserChoice user_choice(OlhViewer viewer) {
  if (std::string program = choice_in_options_file(viewer); !program.empty())
    return {ChoiceSource::kOptionsFile, std::move(program)};
  if (std::string program = choice_in_variable(viewer); !program.empty())
    return {ChoiceSource::kVariable, std::move(program)};
  return {};
}

int copy_program_in_use(char* dst, const OlhViewerPaths* paths, const char* viewer_path) noexcept {
  const char* const candidates[] = {paths == nullptr ? nullptr : paths->overridePath, viewer_path,
                                    paths == nullptr ? nullptr : paths->defaultPath};
  for (const char* candidate : candidates)
    if (!is_empty(candidate)) return write_buffer(dst, candidate) ? OLH_RESULT_OK : OLH_RESULT_FAILED;
  return OLH_RESULT_NO_PROGRAM;
}

}  // namespace olh
