#include "generated_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "file_replacement.h"
#include "olh/dmerge.h"
#include "regular_file.h"
#include "retry.h"

namespace olh {

namespace {

// Whether a file holds just this text. What a stranger's link leads to is not looked at.
bool holds(const std::string& path, std::string_view text) {
  const RegularFile file = open_regular_file(FileReplacement::target_of(path).c_str(), AT_FDCWD, O_NOFOLLOW);
  if (!file || file.size != text.size()) return false;
  char block[8 * 1024];
  while (!text.empty()) {
    const ssize_t got = retry_interrupted([&] { return ::read(file.descriptor.get(), block, sizeof block); });
    if (got <= 0 || !text.starts_with(std::string_view(block, static_cast<std::size_t>(got)))) return false;
    text.remove_prefix(static_cast<std::size_t>(got));
  }
  return true;
}

// A list can be made again, so nobody waits for the disk. It takes the place of a link that a stranger has put there.
bool replace(const std::string& path, std::string_view text) {
  FileReplacement file(path, FileReplacement::Durability::kCached, FileReplacement::StrangersLink::kGivesWay);
  if (!file) return false;
  file.write(text);
  return file.commit();
}

}  // namespace

bool can_be_written(const std::string& path) {
  const std::string target = FileReplacement::target_of(path);
  struct stat status = {};
  const bool is_there = lstat(target.c_str(), &status) == 0 && !S_ISLNK(status.st_mode);
  if (is_there) return access(target.c_str(), W_OK) == 0;
  return access(target.substr(0, target.rfind('/') + 1).c_str(), W_OK | X_OK) == 0;
}

bool put_list(std::string path, std::string_view text) {
  if (!can_be_written(path)) return false;
  if (!holds(path, text) && !replace(path, text)) return false;
  registerNewFile(path.data());
  return true;
}

}  // namespace olh
