// A file that is rewritten: put together beside the old one, and in its place only when all of it is there.
//
// Knows    that the new text goes to NAME.new, over a leftover of that name; that a symbolic link stays one and its
//          target is rewritten, if root or this process's user has made it; that the old file's mode (and, where
//          allowed, its owner) is kept.
// Not      what is written; how another writer of the same file is kept away (exclusive_file).
// Owns     the open NAME.new, which vanishes again unless commit() is reached, and the right to that name.
// For      the option files, and generated lists.
#ifndef OLH_COMMON_FILE_REPLACEMENT_H
#define OLH_COMMON_FILE_REPLACEMENT_H

#include <cstdio>
#include <string>
#include <string_view>

#include "unique_fd.h"
#include "write_signals.h"

namespace olh {

class FileReplacement {
 public:
  // kOnDisk: commit() waits for the disk, so that even a crash of the machine leaves the old text or the new one.
  enum class Durability { kOnDisk, kCached };
  // What becomes of anybody else's link: it is in the way, or the file takes its place.
  enum class StrangersLink { kRefused, kGivesWay };

  // What has the place of a file: nothing, or a link that gives way; a regular file; or what is in the way.
  enum class Former { kNone, kFile, kStays };

  // Where the new text of NAME goes: the name, or where its links lead, at a stranger's link at the latest.
  static std::string target_of(const std::string& name);
  static Former former_at(const std::string& target, StrangersLink link) noexcept;

  // Opens NAME.new. What stands under the name must be a regular file or nothing at all.
  explicit FileReplacement(const std::string& name, Durability durability = Durability::kOnDisk,
                           StrangersLink link = StrangersLink::kRefused);
  FileReplacement(const FileReplacement&) = delete;
  FileReplacement& operator=(const FileReplacement&) = delete;
  ~FileReplacement();

  // Whether NAME.new is open.
  explicit operator bool() const noexcept { return stream_ != nullptr; }
  // The file that is replaced: the name, or where its links lead.
  const std::string& target() const noexcept { return target_; }
  const std::string& temporary_name() const noexcept { return temporary_; }

  // Adds text. The first error sticks: commit() reports it, single writes need no check.
  void write(std::string_view text) noexcept;
  // The stream itself, for whoever writes to one; null when NAME.new is not open. It stays owned here.
  std::FILE* stream() const noexcept { return stream_; }
  // Puts the new file in the old one's place, in one step. Returns whether every write reached it and it is there;
  // otherwise the old file is as it was and errno says why. A whole new file that could not take its place is left as
  // NAME.new, unless it can be made again (kCached).
  bool commit() noexcept;

 private:
  bool finish() noexcept;

  WriteSignalsHeldBack quiet_;  // a file-size limit makes a write fail, and does not end the host
  std::string target_;
  std::string temporary_;
  UniqueFd lock_;  // on NAME.new, until that has taken its place
  std::FILE* stream_ = nullptr;
  Durability durability_;
};

}  // namespace olh

#endif
