// Storing a choice of viewer, in the user's option file or in that of the documentation tree, and what is said of it.
//
// Knows    which choice stands in front of another.
// Not      what else a file holds, and whether it can be read.
// For      setup and viewers.
#ifndef OLH_TOOLS_VIEWER_STORING_H
#define OLH_TOOLS_VIEWER_STORING_H

#include <string>

#include "find.h"
#include "viewer_kind.h"

namespace olh {

// All return a result of the library and say what happened. `program` is an executable.
int store_for_user(const ViewerKind& kind, const std::string& program, const SearchRoots& roots);
int store_for_tree(const ViewerKind& kind, const std::string& program, const SearchRoots& roots);
int forget_choice(const ViewerKind& kind, bool of_tree, const SearchRoots& roots);

}  // namespace olh

#endif
