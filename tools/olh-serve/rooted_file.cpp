#include "rooted_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <deque>

#include "words.h"

namespace olh_serve {

namespace {

constexpr int kMostLinks = 40;
constexpr int kOnlyThePlace = O_PATH | O_NOFOLLOW | O_CLOEXEC;

std::string own_path(const Descriptor& descriptor) { return "/proc/self/fd/" + std::to_string(descriptor.get()); }

// Where a link leads: one that is open itself, or one by its path.
std::string link_target(int directory, const char* path) {
  std::array<char, PATH_MAX> target{};
  const ssize_t size = readlinkat(directory, path, target.data(), target.size());
  return size > 0 && static_cast<std::size_t>(size) < target.size()
             ? std::string(target.data(), static_cast<std::size_t>(size))
             : "";
}

bool is_trusted(const struct stat& link) { return link.st_uid == 0 || link.st_uid == geteuid(); }

// The way from a folder to what is named below it, one name after the other.
class Walk {
 public:
  explicit Walk(const std::string& root)
      : root_(open(root.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)), at_(openat(root_.get(), ".", kOnlyThePlace)) {}

  // Whether it came to an end that may be shown.
  bool follow(const std::vector<std::string>& names) {
    ahead_.assign(names.begin(), names.end());
    if (!at_.is_open() || fstat(at_.get(), &status_) != 0) return false;
    while (!ahead_.empty())
      if (!step()) return false;
    return !by_strangers_link_ || is_below_root();
  }

  const struct stat& status() const { return status_; }
  Descriptor end() && { return std::move(at_); }

 private:
  bool step() {
    const std::string name = std::move(ahead_.front());
    ahead_.pop_front();
    Descriptor next(openat(at_.get(), name.c_str(), kOnlyThePlace));
    if (!next.is_open() || fstat(next.get(), &status_) != 0) return false;
    if (S_ISLNK(status_.st_mode)) return turn(link_target(next.get(), ""));
    at_ = std::move(next);
    return true;
  }

  // The link that was met is replaced by where it leads.
  bool turn(const std::string& target) {
    by_strangers_link_ = by_strangers_link_ || !is_trusted(status_);
    if (target.empty() || ++links_ > kMostLinks) return false;
    const olh_viewers::Words names = olh_viewers::pieces_of(target, '/');
    ahead_.insert(ahead_.begin(), names.begin(), names.end());
    if (target[0] == '/') at_ = Descriptor(open("/", O_PATH | O_DIRECTORY | O_CLOEXEC));
    return fstat(at_.get(), &status_) == 0;
  }

  bool is_below_root() const {
    const std::string root = link_target(AT_FDCWD, own_path(root_).c_str());
    return !root.empty() && link_target(AT_FDCWD, own_path(at_).c_str()).starts_with(root == "/" ? root : root + "/");
  }

  Descriptor root_;
  Descriptor at_;
  std::deque<std::string> ahead_;
  struct stat status_ = {};
  int links_ = 0;
  bool by_strangers_link_ = false;
};

}  // namespace

Descriptor::~Descriptor() {
  if (fd_ >= 0) close(fd_);
}

RootedFile open_below(const std::string& root, const std::vector<std::string>& names) {
  RootedFile file;
  Walk walk(root);
  if (!walk.follow(names)) return file;
  file.status = walk.status();
  file.descriptor = std::move(walk).end();
  if (S_ISDIR(file.status.st_mode)) file.kind = RootedFile::Kind::kFolder;
  if (!S_ISREG(file.status.st_mode)) return file;
  file.descriptor = Descriptor(open(own_path(file.descriptor).c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  if (file.descriptor.is_open()) file.kind = RootedFile::Kind::kFile;
  return file;
}

std::string bytes_of(const RootedFile& file, std::size_t offset, std::size_t most) {
  std::string bytes(most, '\0');
  std::size_t size = 0;
  while (size < most) {
    const ssize_t count =
        pread(file.descriptor.get(), bytes.data() + size, most - size, static_cast<off_t>(offset + size));
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) break;
    size += static_cast<std::size_t>(count);
  }
  bytes.resize(size);
  return bytes;
}

}  // namespace olh_serve
