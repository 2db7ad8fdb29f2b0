// All names of a directory, and where its files lie.
//
// Knows    the order in which the directory gives the names, and that of their inode numbers: a file system keeps
//          neighbours together, so that many files opened in this order cost fewer seeks and fewer cache misses.
// Not      what an entry is.
// Owns     the open directory and the names.
// For      the steps that open nearly every file of a directory.
#ifndef OLH_DMERGE_LISTING_H
#define OLH_DMERGE_LISTING_H

#include <memory_resource>
#include <string>
#include <vector>

#include "directory.h"

namespace olh {

class Listing {
 public:
  // No names when the directory cannot be opened.
  explicit Listing(const std::string& path);

  // Whether the names broke off in a failure, so that some of them may be missing.
  bool failed() const noexcept { return directory_.failed(); }

  // In the order in which the directory gives them.
  const std::vector<const char*>& names() const noexcept { return names_; }
  // The files in the order of the disk, with the places of their names in names().
  struct File {
    ino_t inode;
    std::size_t place;
  };
  const std::vector<File>& files() const noexcept { return files_; }
  // For opening what lies in the directory: a long path to it is then walked once, not once a file.
  int descriptor() const noexcept { return directory_.descriptor(); }

 private:
  Directory directory_;
  std::pmr::monotonic_buffer_resource memory_;
  std::vector<const char*> names_;
  std::vector<File> files_;
};

}  // namespace olh

#endif
