// From a path string to roots at the end of a list.
//
// Knows    how a string is cut, and how a URL that the cut has torn apart is joined again.
// Not      whether an element is a root (root_options), how it is linked (path_list).
// For      the host's roots (path_sources) and those of an options file (root_options).
#ifndef OLH_DOCLIST_PATH_STRING_H
#define OLH_DOCLIST_PATH_STRING_H

#include <string_view>

#include "path_list.h"

namespace olh {

// What the roots of one string have in common; each may be empty.
struct RootOrigin {
  std::string_view html;
  std::string_view pdf;
  std::string_view parent;
};

// Appends the accepted elements. Returns OLH_RESULT_OK, or OLH_RESULT_NOT_FOUND when one or more were rejected.
int split_roots(olh_docList& locator, std::string_view paths, const RootOrigin& origin, PathListEnd& end);

}  // namespace olh

#endif
