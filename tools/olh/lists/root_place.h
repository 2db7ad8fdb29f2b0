// The place of a documentation root, as the verbs take it that change one.
//
// Knows    which directories are roots, and what one can be made of.
// For      new, prepare-root, remove.
#ifndef OLH_TOOLS_ROOT_PLACE_H
#define OLH_TOOLS_ROOT_PLACE_H

#include <string>
#include <system_error>

namespace olh {

// The absolute path, without slashes at its end.
std::string path_of_root(const std::string& given);

bool is_root_directory(const std::string& root);
bool is_nothing(const std::string& place, std::error_code& failed);
// Whether a root can be made there: nothing is, or an empty directory.
bool takes_new_root(const std::string& place, std::error_code& failed);

// A sentence about a directory that is there and no root.
std::string no_root(const std::string& directory);

}  // namespace olh

#endif
