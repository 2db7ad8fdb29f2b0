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

// A stranger's link could lead to any file that this process may write.
bool is_strangers(const struct stat& link) noexcept { return link.st_uid != 0 && link.st_uid != geteuid(); }

// What a link says, "" where it is a stranger's or there is none. Its owner is asked for by the descriptor, so that nobody
// puts another link in its place in between.
std::string text_of_link(const std::string& name) {
  const UniqueFd link(open(name.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
  struct stat status = {};
  if (!link || fstat(link.get(), &status) != 0 || !S_ISLNK(status.st_mode) || is_strangers(status)) return {};
  char text[PATH_MAX];
  const ssize_t size = readlinkat(link.get(), "", text, sizeof text);
  return {text, size > 0 ? static_cast<std::size_t>(size) : 0};
}

// Where a chain of symbolic links ends, also when nothing is there yet: at a stranger's link at the latest. The name itself
// when it is no link. Links that lead to its directory are not looked at.
std::string follow_links(std::string name) {
  for (int links = 0; links < kMostLinks; ++links) {
    const std::string text = text_of_link(name);
    if (text.empty()) break;
    const std::size_t slash = name.rfind('/');
    if (text.front() == '/' || slash == std::string::npos)
      name = text;
    else
      name.replace(slash + 1, std::string::npos, text);
  }
  return name;
}

using Former = FileReplacement::Former;

Former look_at(const std::string& target, struct stat& status, FileReplacement::StrangersLink link) noexcept {
  if (lstat(target.c_str(), &status) != 0) return errno == ENOENT ? Former::kNone : Former::kStays;
  if (S_ISREG(status.st_mode)) return Former::kFile;
  const bool gives_way = link == FileReplacement::StrangersLink::kGivesWay && is_strangers(status);
  return S_ISLNK(status.st_mode) && gives_way ? Former::kNone : Former::kStays;
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

std::string FileReplacement::target_of(const std::string& name) { return follow_links(name); }

FileReplacement::Former FileReplacement::former_at(const std::string& target, StrangersLink link) noexcept {
  struct stat status = {};
  return look_at(target, status, link);
}

FileReplacement::FileReplacement(const std::string& name, Durability durability, StrangersLink link)
    : target_(follow_links(name)), temporary_(target_ + ".new"), durability_(durability) {
  struct stat old = {};
  const Former before = look_at(target_, old, link);
  if (before == Former::kStays) return;
  lock_ = create_exclusively(temporary_, before == Former::kFile ? old.st_mode & kNewFileMode : kNewFileMode);
  if (!lock_) return;
  UniqueFd fd(fcntl(lock_.get(), F_DUPFD_CLOEXEC, 0));
  const Former now = look_at(target_, old, link);  // what another writer has left, while this one waited
  const bool is_ready = now == Former::kNone || (now == Former::kFile && take_over(fd.get(), old));
  if (fd && is_ready) stream_ = fdopen(fd.get(), "w");
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
  const int error = errno;
  if (!is_whole || durability_ == Durability::kCached) unlink(temporary_.c_str());
  errno = error;
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
