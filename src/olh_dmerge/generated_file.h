// A list on its way to the disk.
//
// Knows    that it is put together in memory, takes the old one's place in one step, and is then reported. One that says
//          what the old one says leaves that as it is: its date stays true, and whoever keeps a copy need not fetch it anew.
// Not      what is in it, nor what a failure means: that is the step's message and result.
// For      the steps that write a list.
#ifndef OLH_DMERGE_GENERATED_FILE_H
#define OLH_DMERGE_GENERATED_FILE_H

#include <optional>
#include <string>
#include <string_view>

#include "file_replacement.h"
#include "regular_file.h"

namespace olh {

class GeneratedFile {
 public:
  explicit GeneratedFile(std::string path);

  const std::string& path() const noexcept { return path_; }
  // Whether it can be written, as far as that can be told beforehand. One that is write-protected stays, though a new
  // file could take its place.
  explicit operator bool() const noexcept;
  // Makes the file say this and reports it. Returns whether it does; otherwise the old one is as it was, and nothing
  // lies beside it.
  bool finish(std::string_view text);

 private:
  bool replace(std::string_view text);

  std::string path_;
  RegularFile old_;  // when it can be read
  std::optional<FileReplacement> replacement_;
};

}  // namespace olh

#endif
