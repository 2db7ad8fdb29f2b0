// Paths below a documentation root.
//
// Knows    that a path is one string, cleaned as cleanPath does.
// Not      which files there are: each step names its own.
// For      the other files of this room.
#ifndef OLH_DMERGE_PATHS_H
#define OLH_DMERGE_PATHS_H

#include <initializer_list>
#include <string>
#include <string_view>

namespace olh {

// The parts in one string, cleaned.
std::string clean_path(std::initializer_list<std::string_view> parts);

// Adds the parts to the end of a text.
void append(std::string& text, std::initializer_list<std::string_view> parts);

}  // namespace olh

#endif
