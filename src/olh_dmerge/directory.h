// The names in a directory, one after the other, in the order the file system gives them.
//
// Knows    that a listing can fail halfway.
// Not      what an entry is ("." and ".." are among them): a file's type is asked of the file, since d_type may say nothing.
// For      portal_list and document_lists, through listing.
#ifndef OLH_DMERGE_DIRECTORY_H
#define OLH_DMERGE_DIRECTORY_H

#include <dirent.h>

namespace olh {

class Directory {
 public:
  // Opens a directory; a FIFO or device in its place does not block.
  explicit Directory(const char* path) noexcept;
  Directory(const Directory&) = delete;
  Directory& operator=(const Directory&) = delete;
  ~Directory();

  explicit operator bool() const noexcept { return stream_ != nullptr; }
  // For opening what lies in it; stays the directory's own.
  int descriptor() const noexcept { return stream_ == nullptr ? -1 : dirfd(stream_); }
  // The next name, valid until the next call; null at the end, after a failure, and without an open directory.
  const char* next() noexcept;
  // The inode number of the entry that next() gave last.
  ino_t inode() const noexcept { return inode_; }
  // Whether the names ended in a failure, so that some of them may be missing.
  bool failed() const noexcept { return failed_; }

 private:
  DIR* stream_ = nullptr;
  ino_t inode_ = 0;
  bool failed_ = false;
};

}  // namespace olh

#endif
