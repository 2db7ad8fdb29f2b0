// A regular file, opened for reading.
//
// Knows    that a FIFO or device in a file's place must not block, and that nothing but a regular file is read.
// For      whoever reads a file that somebody else wrote.
#ifndef OLH_COMMON_REGULAR_FILE_H
#define OLH_COMMON_REGULAR_FILE_H

#include <fcntl.h>

#include <cstdint>

#include "unique_fd.h"

namespace olh {

struct RegularFile {
  UniqueFd descriptor;
  std::uint64_t size = 0;  // in bytes, when it was opened

  explicit operator bool() const noexcept { return static_cast<bool>(descriptor); }
};

// Opens a path, which counts from `directory` when it is relative. Empty when that cannot be read or is no regular file;
// with O_NOFOLLOW as a further flag, also when it is a symbolic link.
RegularFile open_regular_file(const char* path, int directory = AT_FDCWD, int further_flags = 0) noexcept;

}  // namespace olh

#endif
