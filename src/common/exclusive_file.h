// A file under a fixed name that one writer at a time may have.
//
// Knows    that the writer holds a lock on its file for as long as the name is its own. What nobody holds is a leftover,
//          or somebody's link to another file: it is removed, never followed. Writers come after one another, where the
//          file system knows locks.
// Not      what becomes of the file.
// For      file_replacement, and lists that are written in place.
#ifndef OLH_COMMON_EXCLUSIVE_FILE_H
#define OLH_COMMON_EXCLUSIVE_FILE_H

#include <sys/stat.h>

#include <string>

#include "unique_fd.h"

namespace olh {

// Creates it, open for writing; the lock goes with the last descriptor of it. A file that another writer has, or
// that cannot be told from one, is waited for, a second at most. Empty when the name cannot be had; errno then says why:
// EACCES for a file that this process may neither read nor write.
UniqueFd create_exclusively(const std::string& name, mode_t mode);

// Opens a regular file that is there for writing, once no other writer has it so; not through a link. Empty when it cannot
// be opened or another writer keeps it for more than a second.
UniqueFd open_exclusively(const std::string& name);

}  // namespace olh

#endif
