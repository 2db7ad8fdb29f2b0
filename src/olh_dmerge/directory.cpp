#include "directory.h"

#include <fcntl.h>

#include <cerrno>

#include "unique_fd.h"

namespace olh {

Directory::Directory(const char* path) noexcept {
  UniqueFd fd(::open(path, O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK));
  if (!fd) return;
  stream_ = fdopendir(fd.get());
  if (stream_ != nullptr) fd.release();
}

Directory::~Directory() {
  if (stream_ != nullptr) closedir(stream_);
}

const char* Directory::next() noexcept {
  if (stream_ == nullptr || failed_) return nullptr;
  errno = 0;
  const dirent* entry = readdir(stream_);
  if (entry == nullptr) {
    failed_ = errno != 0;
    return nullptr;
  }
  inode_ = entry->d_ino;
  return entry->d_name;
}

}  // namespace olh
