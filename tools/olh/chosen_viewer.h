// Which program shows a document, and who chose it.
//
// Knows    the order of the sources: the user's option file, the variable, the documentation tree's options file, the
//          search along PATH.
// Not      how a program is started.
// For      show and setup.
#ifndef OLH_TOOLS_CHOSEN_VIEWER_H
#define OLH_TOOLS_CHOSEN_VIEWER_H

#include <string>

#include "olh/olh.h"

namespace olh {

struct ChosenViewer {
  std::string program;  // "" when none is known
  std::string choice;   // "option_file", "variable", "tree", "search"; "" when none is known
  std::string from;     // the file, or the name of the variable
};

// The program for OLH_VIEWER_HTML or OLH_VIEWER_PDF, given what the documentation tree prescribes ("" for nothing) and
// the options file that says so.
ChosenViewer choose_viewer(OlhViewer viewer, const std::string& tree_program, const std::string& tree_file);

// "/usr/bin/evince (QEL_PDF_READER)", or "none".
std::string describe(const ChosenViewer& viewer);

// Whether the program is one of today's browsers, which no longer understand the command line that asks a browser
// whether it runs: they hang, or show an empty window instead of the page.
bool misunderstands_remote(const std::string& program);

}  // namespace olh

#endif
