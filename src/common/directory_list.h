// Lists of directories in one string: PATH, documentation paths.
//
// Knows    the separator (the exported pathsep) and that empty pieces vanish.
// Not      what a piece means, nor that a URL root is cut by the separator too (path_string in olh_doclist).
// For      the program searches of the locator and both launchers, and the locator's path strings.
#ifndef OLH_COMMON_DIRECTORY_LIST_H
#define OLH_COMMON_DIRECTORY_LIST_H

#include <string>
#include <string_view>
#include <vector>

namespace olh {

// The non-empty pieces of a list, in order; they point into `list`.
std::vector<std::string_view> split_directory_list(std::string_view list);

// A directory and a name below it, with one "/" between them unless the directory ends in one.
std::string path_in(std::string_view directory, std::string_view name);

}  // namespace olh

#endif
