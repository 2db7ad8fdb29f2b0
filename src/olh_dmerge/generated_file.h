// A list on its way to the disk.
//
// Knows    that it is put together in memory, takes the old one's place in one step, and is then reported.
// Not      what is in it, nor what a failure means: that is the step's message and result.
// For      the steps that write a list.
#ifndef OLH_DMERGE_GENERATED_FILE_H
#define OLH_DMERGE_GENERATED_FILE_H

#include <unistd.h>

#include <string>
#include <string_view>
#include <utility>

#include "file_replacement.h"
#include "olh/dmerge.h"

namespace olh {

class GeneratedFile {
 public:
  // A list can be made again, so nobody waits for the disk.
  explicit GeneratedFile(std::string path)
      : path_(std::move(path)), file_(path_, FileReplacement::Durability::kCached) {}

  const std::string& path() const noexcept { return path_; }
  // Whether it can be written. One that is write-protected stays, though a new file could take its place.
  explicit operator bool() const noexcept {
    return file_ && (access(path_.c_str(), F_OK) != 0 || access(path_.c_str(), W_OK) == 0);
  }
  // Writes all of it and reports the file. Returns whether it is there; otherwise the old one is as it was, and
  // nothing lies beside it.
  bool finish(std::string_view text) {
    file_.write(text);
    if (!file_.commit()) {
      unlink(file_.temporary_name().c_str());
      return false;
    }
    registerNewFile(path_.data());
    return true;
  }

 private:
  std::string path_;
  FileReplacement file_;
};

}  // namespace olh

#endif
