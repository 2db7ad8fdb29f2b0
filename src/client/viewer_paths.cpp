// Reading and choosing the viewer programs: the user's own, and a documentation tree's.
#include <cstring>

#include "bounded_text.h"
#include "entry_point.h"
#include "names.h"
#include "olh/support.h"

namespace {

// Keys and files of SetIniFile.
constexpr int kBrowserKey = 1;
constexpr int kReaderKey = 2;
constexpr int kUserFile = 1;

// Fills `full` with the executable that a host named: a path as it stands, a bare name from along PATH.
bool resolve_program(char* full, const char* path) noexcept {
  if (std::strchr(path, '/') == nullptr) return search_path(full, path, nullptr) != 0;
  return exe_exists(path) != 0 && olh::write_buffer(full, path);
}

int store_users_choice(OlhViewer viewer, const char* program) noexcept {
  if (viewer == OLH_VIEWER_PDF) return SetIniFile(kReaderKey, program, kUserFile);
  if (viewer == OLH_VIEWER_HTML) return SetIniFile(kBrowserKey, program, kUserFile);
  return OLH_RESULT_INVALID;
}

// Returns false when memory is exhausted; the process then keeps the program that it has. The launchers answer 0 in any
// case, so they are asked what they have now.
bool use_from_now_on(OlhViewer viewer, const char* program) noexcept {
  char current[OLH_BUFFER_SIZE] = "";
  if (viewer == OLH_VIEWER_PDF) {
    OlhAcroSetPath(program);
    OlhAcroGetViewerPath(current, nullptr);
  } else {
    OlhBrowserSetPath(program);
    OlhBrowserGetPath(current, nullptr);
  }
  return std::strcmp(current, program) == 0;
}

}  // namespace

int OlhGetViewerPath(OlhViewer viewer, char* path) noexcept {
  const olh::EntryPoint call("OlhGetViewerPath", OlhViewer_toString(viewer));
  if (path == nullptr || (viewer != OLH_VIEWER_PDF && viewer != OLH_VIEWER_HTML))
    return call.done(OLH_RESULT_INVALID);
  char trees_choice[OLH_BUFFER_SIZE] = "";
  GetDocTreeViewerOverride(viewer, trees_choice);
  return call.done(viewer == OLH_VIEWER_PDF ? OlhAcroGetViewerPath(path, trees_choice)
                                            : OlhBrowserGetPath(path, trees_choice));
}

int OlhSetViewerPath(OlhViewer viewer, const char* path) noexcept {
  const olh::EntryPoint call("OlhSetViewerPath", OlhViewer_toString(viewer), path);
  if (olh::is_empty(path)) return call.done(store_users_choice(viewer, ""));
  char program[OLH_BUFFER_SIZE] = "";
  if (!resolve_program(program, path)) return call.done(OLH_RESULT_NO_PROGRAM);
  char current[OLH_BUFFER_SIZE] = "";
  if (OlhGetViewerPath(viewer, current) == OLH_RESULT_INVALID) return call.done(OLH_RESULT_INVALID);
  if (std::strcmp(current, program) == 0) return call.done(OLH_RESULT_OK);
  if (!use_from_now_on(viewer, program)) return call.done(OLH_RESULT_IO);
  return call.done(store_users_choice(viewer, program));
}

int OlhSetAltViewerPath(OlhViewer viewer, const char* path) noexcept {
  const olh::EntryPoint call("OlhSetAltViewerPath", OlhViewer_toString(viewer), path);
  char program[OLH_BUFFER_SIZE] = "";
  if (!olh::is_empty(path) && !resolve_program(program, path)) return call.done(OLH_RESULT_NO_PROGRAM);
  return call.done(SetAltViewerPath(viewer, program));
}
