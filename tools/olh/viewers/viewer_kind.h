// The two kinds of viewer, and what goes with each.
//
// Knows    the words, labels, keys and adapters of the browser and the PDF reader; which programs of today do not
//          understand the library's command lines.
// Not      which program is in use (chosen_viewer).
// For      setup, viewers, show and doctor.
#ifndef OLH_TOOLS_VIEWER_KIND_H
#define OLH_TOOLS_VIEWER_KIND_H

#include <array>
#include <string>

#include "olh/olh.h"
#include "programs.h"

namespace olh {

struct ViewerKind {
  OlhViewer viewer;
  const char* word;     // on the command line and as a key of JSON
  const char* label;    // in a sentence
  const char* key;      // in both option files, and the variable
  const char* adapter;  // the program that drives the viewers of today
  const char* setting;  // the variable that tells the adapter which of them
};

inline constexpr std::array kViewerKinds = {
    ViewerKind{OLH_VIEWER_HTML, "browser", "browser", "QEL_HTML_BROWSER", "olh-browser", "OLH_BROWSER_PROGRAM"},
    ViewerKind{OLH_VIEWER_PDF, "pdf", "PDF reader", "QEL_PDF_READER", "olh-pdf-reader", "OLH_PDF_PROGRAM"}};

inline const ViewerKind& kind_of(OlhViewer viewer) { return kViewerKinds[viewer == OLH_VIEWER_HTML ? 0 : 1]; }

// The kind's adapter: beside this program, else along PATH; "" when it is not installed.
std::string installed_adapter(const ViewerKind& kind);

// Whether a program is the kind's adapter, also by a link.
bool is_adapter(const ViewerKind& kind, const std::string& program);

// The row of a program in the adapters' table, also of one that is called through a link; null when it has none.
const olh_viewers::Program* known_program(const std::string& program);

// Whether the program is one of today's that do not understand the command lines of the library. A browser hangs, or
// shows an empty window instead of the page; a reader refuses a destination.
bool misunderstands(const ViewerKind& kind, const std::string& program);

// What happens with such a program; and the same with what to do about it, behind "note: ".
std::string misunderstanding(const ViewerKind& kind, const std::string& program);
std::string misunderstanding_note(const ViewerKind& kind, const std::string& program);

// The executable that the library takes a name for: a path as it stands, a bare name from along PATH; "" for none.
std::string executable_named(const std::string& name);

}  // namespace olh

#endif
