// The places that can choose a viewer program, and what each of them says.
//
// Knows    the four places in their order, also what a place names in vain.
// Not      which of them the library follows (chosen_viewer: the library itself says so).
// For      viewers and doctor.
#ifndef OLH_TOOLS_VIEWER_SOURCES_H
#define OLH_TOOLS_VIEWER_SOURCES_H

#include <string>
#include <vector>

#include "find.h"
#include "viewer_kind.h"

namespace olh {

struct ViewerSource {
  std::string choice;   // as ChosenViewer has it: "option_file", "variable", "tree", "search"
  std::string from;     // the file, the variable or "PATH"; "" for a tree when no root is known
  std::string value;    // what it names, "" for nothing
  std::string program;  // what the library takes from it; "" when that is no executable
};

// In the order in which they are asked: the first with a program wins. The tree is that of the first root.
std::vector<ViewerSource> viewer_sources(const ViewerKind& kind, const SearchRoots& roots);

}  // namespace olh

#endif
