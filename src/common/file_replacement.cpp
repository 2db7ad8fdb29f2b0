#include "file_replacement.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <utility>

#include "exclusive_file.h"
#include "retry.h"

namespace olh {

namespace {

constexpr int kMostLinks = 40;
constexpr mode_t kNewFileMode = 0666;
constexpr mode_t kAccessBits = 0777;
constexpr mode_t kAllModeBits = 07777;

// Where a chain of symbolic links ends, also when nothing is there yet; the name itself when it is no link.
std::string follow_links(std::string name) {
  char target[PATH_MAX];
  for (int links = 0; links < kMostLinks; ++links) {
    const ssize_t size = readlink(name.c_str(), target, sizeof target);
    if (size <= 0) break;
    const std::string_view text(target, static_cast<std::size_t>(size));
    const std::size_t slash = name.rfind('/');
    if (text.front() == '/' || slash == std::string::npos)
      name = text;
    else
      name.replace(slash + 1, std::string::npos, text);
  }
  return name;
}

// Gives a new file the old one's owner, as far as this process may, and its mode; under another owner without the
// bits that would lend this one's rights.
bool take_over(int fd, const struct stat& old) {
  struct stat fresh = {};
  if (fstat(fd, &fresh) != 0) return false;
  const bool same_owner =
      (fresh.st_uid == old.st_uid && fresh.st_gid == old.st_gid) || fchown(fd, old.st_uid, old.st_gid) == 0;
  return fchmod(fd, old.st_mode & (same_owner ? kAllModeBits : kAccessBits)) == 0;
}

}  // namespace

FileReplacement::FileReplacement(const std::string& name, Durability durability)
    : target_(follow_links(name)), temporary_(target_ + ".new"), durability_(durability) {
  struct stat old = {};
  const bool exists = stat(target_.c_str(), &old) == 0;
  if (exists ? !S_ISREG(old.st_mode) : errno != ENOENT) return;
  lock_ = create_exclusively(temporary_, exists ? old.st_mode & kNewFileMode : kNewFileMode);
  if (!lock_) return;
  UniqueFd fd(fcntl(lock_.get(), F_DUPFD_CLOEXEC, 0));
  const bool is_over = stat(target_.c_str(), &old) == 0;  // what another writer has left, while this one waited
  if (fd && (!is_over || take_over(fd.get(), old))) stream_ = fdopen(fd.get(), "w");
  if (stream_ != nullptr)
    fd.release();
  else
    unlink(temporary_.c_str());
}

FileReplacement::~FileReplacement() {
  if (stream_ == nullptr) return;
  std::fclose(stream_);
  unlink(temporary_.c_str());
}

void FileReplacement::write(std::string_view text) noexcept {
  if (stream_ != nullptr) std::fwrite(text.data(), 1, text.size(), stream_);
}

bool FileReplacement::commit() noexcept {
  if (stream_ == nullptr) return false;
  const bool is_whole = finish();
  if (is_whole && std::rename(temporary_.c_str(), target_.c_str()) == 0) return true;
  if (!is_whole || durability_ == Durability::kCached) unlink(temporary_.c_str());
  return false;
}

// Closes the new file. Returns whether everything arrived.
bool FileReplacement::finish() noexcept {
  std::FILE* stream = std::exchange(stream_, nullptr);
  bool whole = std::ferror(stream) == 0 && std::fflush(stream) == 0;
  if (whole && durability_ == Durability::kOnDisk)
    whole = retry_interrupted([stream] { return fsync(fileno(stream)); }) == 0;
  return std::fclose(stream) == 0 && whole;
}

}  // namespace olh
