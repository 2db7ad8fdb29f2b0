// The choice of a viewer program: the record that each launcher holds, and how it is filled.
//
// Knows    where the user's choice is looked for, and the order in which the known programs are taken.
// Not      how each launcher searches for its default, nor what it writes about it.
// Owns     both paths of a record, which are made with malloc.
// For      both viewer launchers.
#ifndef OLH_COMMON_VIEWER_CHOICE_H
#define OLH_COMMON_VIEWER_CHOICE_H

#include <memory>
#include <string>

#include "olh/olh.h"

// Null: there is none. A path is never "".
struct OlhViewerPaths {
  char* defaultPath;   // found by the launcher's own search
  char* overridePath;  // chosen by the user
};

namespace olh {

struct FreeViewerPaths {
  void operator()(OlhViewerPaths* paths) const noexcept;
};
using ViewerPaths = std::unique_ptr<OlhViewerPaths, FreeViewerPaths>;

// A record without paths. Throws std::bad_alloc.
ViewerPaths make_viewer_paths();

// Makes a path of a record a copy of `value`, which may be the path itself. When it throws, the path is unchanged.
void replace_path(char*& path, const char* value);

// The user's options file in the home directory, behind "/.".
inline constexpr const char* kViewerOptionsName = "qel_viewer_config.ini";

enum class ChoiceSource { kNone, kOptionsFile, kVariable };

struct UserChoice {
  ChoiceSource source = ChoiceSource::kNone;
  std::string program;
};

// The user's browser (OLH_VIEWER_HTML) or reader (OLH_VIEWER_PDF), from the first that names an executable:
//   1. the options file in the home directory
//   2. the variable QEL_HTML_BROWSER or QEL_PDF_READER, its separators normalised; a name without "/" must be found
//      along PATH and stays a bare name
UserChoice user_choice(OlhViewer viewer);

// Copies the program in use into a buffer of OLH_BUFFER_SIZE bytes, the first of:
//   1. overridePath   2. viewer_path (may be null or "")   3. defaultPath
// Returns OLH_RESULT_OK; OLH_RESULT_NO_PROGRAM when there is none (dst is untouched); OLH_RESULT_FAILED when it does not
// fit (dst is "") or dst is null. `paths` may be null.
int copy_program_in_use(char* dst, const OlhViewerPaths* paths, const char* viewer_path) noexcept;

}  // namespace olh

#endif
