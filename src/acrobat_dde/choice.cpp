// Which reader: the user's choice, the program that the documentation prescribes, the one found by searching.
#include <cstdlib>
#include <new>
#include <string>
#include <string_view>

#include "acrobat_dde.h"
#include "bounded_text.h"
#include "directory_list.h"
#include "environment.h"
#include "olh/support.h"

void OlhAcroDDE::setViewerDefaults(const char* path) {
  if (d_viewerPaths != nullptr) {
    if (!olh::is_empty(path)) olh::replace_path(d_viewerPaths->overridePath, path);
    return;
  }
  d_acroViewerExePath.reset(static_cast<char*>(std::calloc(OLH_BUFFER_SIZE, 1)));
  if (d_acroViewerExePath == nullptr) throw std::bad_alloc();
  olh::ViewerPaths paths = olh::make_viewer_paths();
  const olh::UserChoice choice = olh::user_choice(OLH_VIEWER_PDF);
  if (choice.source != olh::ChoiceSource::kNone) olh::replace_path(paths->overridePath, choice.program.c_str());
  locateViewer();
  if (!olh::is_empty(d_acroViewerExePath.get())) olh::replace_path(paths->defaultPath, d_acroViewerExePath.get());
  d_viewerPaths = std::move(paths);
}

// The first "acroread" that can be executed along PATH, /bin, /usr/bin and /usr/local/bin.
int OlhAcroDDE::locateViewer() {
  const std::string directories =
      std::string(olh::text_of(olh::program_directories())) + ":/bin:/usr/bin:/usr/local/bin";
  for (const std::string_view directory : olh::split_directory_list(directories)) {
    const std::string candidate = olh::path_in(directory, "acroread");
    if (!olh::fits(candidate) || exe_exists(candidate.c_str()) != 1) continue;
    olh::write_buffer(d_acroViewerExePath.get(), candidate);
    break;
  }
  return OLH_RESULT_OK;
}

int OlhAcroDDE::getViewerPath(char* dst, const char* viewer_path) {
  return olh::copy_program_in_use(dst, d_viewerPaths.get(), viewer_path);
}

int OlhAcroDDE::setViewerPath(const char* path) {
  olh::write_buffer(d_acroViewerExePath.get(), olh::text_of(path));
  return OLH_RESULT_OK;
}
