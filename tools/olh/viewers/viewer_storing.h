// Storing a choice of viewer, in the user's option file or in that of the documentation tree, and what is said of it.
//
// Knows    that nothing is written into a file that cannot be read, and which choice stands in front of another.
// Not      what else a file holds.
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
int forget_for_user(const ViewerKind& kind, const SearchRoots& roots);
int forget_for_tree(const ViewerKind& kind, const SearchRoots& roots);

// Whether the user's file, or that of the tree, cannot be read; says so, and that nothing is changed.
bool refuses_spoilt_user_file();
bool refuses_spoilt_tree_file(const SearchRoots& roots);

}  // namespace olh

#endif
