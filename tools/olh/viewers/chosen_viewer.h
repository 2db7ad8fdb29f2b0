// Which program shows a document, and who chose it.
//
// Knows    the four places that can choose, in their order: the user's option file, the variable, the documentation
//          tree's options file, the search along PATH; also what a place names in vain.
// Not      how a program is started.
// For      setup and viewers; show and doctor.
#ifndef OLH_TOOLS_CHOSEN_VIEWER_H
#define OLH_TOOLS_CHOSEN_VIEWER_H

#include <string>
#include <vector>

#include "find.h"
#include "olh/olh.h"
#include "viewer_kind.h"

namespace olh {

struct ChosenViewer {
  std::string program;  // "" when none is known
  std::string choice;   // "option_file", "variable", "tree", "search", "olh"; "" when none is known
  std::string from;     // the file, or the name of the variable
};

// The program for OLH_VIEWER_HTML or OLH_VIEWER_PDF, given what the documentation tree prescribes ("" for nothing) and
// the options file that says so.
ChosenViewer choose_viewer(OlhViewer viewer, const std::string& tree_program, const std::string& tree_file);

// The program for what this command itself shows, which the launchers of this process use from now on. Where neither the
// user nor the tree has chosen it is the adapter, so that the first page comes without a setting; where the tree has, its
// program is also the one that is asked whether it runs.
ChosenViewer settle_viewer(OlhViewer viewer, const std::string& tree_program, const std::string& tree_file);

// "/usr/bin/evince (QEL_PDF_READER)", or "none".
std::string describe(const ChosenViewer& viewer);

// The program for what the first documentation root holds.
ChosenViewer viewer_in_use(const ViewerKind& kind, const SearchRoots& roots);

// What one of the places says.
struct ViewerSource {
  std::string choice;   // as ChosenViewer has it
  std::string from;     // the file, the variable or "PATH"; "" for a tree when no root is known
  std::string value;    // what it names, "" for nothing
  std::string program;  // what the library takes from it; "" when that is no executable
};

// In the order in which they are asked: the first with a program wins. The tree is that of the first root.
std::vector<ViewerSource> viewer_sources(const ViewerKind& kind, const SearchRoots& roots);

}  // namespace olh

#endif
