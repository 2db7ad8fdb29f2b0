// Files as the adapters read them.
//
// Knows    that only regular files are read, without ever waiting for one.
// For      the lookups of the adapters.
#ifndef OLH_TOOLS_VIEWERS_FILES_H
#define OLH_TOOLS_VIEWERS_FILES_H

#include <string>
#include <string_view>

#include "words.h"

namespace olh_viewers {

// The bytes of a regular file of at most 16 MiB; "" for everything else.
std::string content_of(const std::string& path);

bool is_readable_file(const std::string& path);

// The executable of that name: itself when it has a "/", else the first along PATH; "" when there is none, or when it is
// the adapter that asks.
std::string find_program(const std::string& name);

// A name below a directory.
std::string path_in(const std::string& directory, const std::string& name);

// The pieces of a list, without the empty ones.
Words pieces_of(std::string_view list, char separator);

// The value of a variable; "" when it is not set.
std::string variable(const char* name);

}  // namespace olh_viewers

#endif
