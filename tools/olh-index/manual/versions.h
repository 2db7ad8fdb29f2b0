// "This version" of what a manual is about: the one that its title names.
//
// Knows    what a version looks like in a title: "Python 3.11", "GNU Octave (version 7.3.0)".
// For      index_maker.
#ifndef OLH_TOOLS_INDEX_VERSIONS_H
#define OLH_TOOLS_INDEX_VERSIONS_H

#include <string>
#include <string_view>

namespace olh_index {

// The first number with a point in it; "" without one.
std::string version_in(std::string_view title);

// Whether a title names this version, or that to which it belongs: 3.25 for 3.25.1.
bool names_version(std::string_view title, std::string_view version);

}  // namespace olh_index

#endif
