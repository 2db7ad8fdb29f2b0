#include "session_files.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <ctime>

#include "files.h"

namespace olh_viewers {

namespace {

constexpr mode_t kOwnDirectory = 0700;
constexpr mode_t kOwnFile = 0600;

bool belongs_to_user_alone(const std::string& directory) {
  struct stat status = {};
  return lstat(directory.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == geteuid() &&
         (status.st_mode & 077U) == 0;
}

// The directory for the files of this session; "" without one that can be trusted.
std::string directory_of_session() {
  for (const std::string& directory : {variable("XDG_RUNTIME_DIR"), "/run/user/" + std::to_string(geteuid())})
    if (directory.starts_with('/') && belongs_to_user_alone(directory)) return directory;
  return "";
}

bool wait_for_lock(int fd, int milliseconds) {
  constexpr timespec kPause = {0, 5000000};
  for (int left = milliseconds; flock(fd, LOCK_EX | LOCK_NB) != 0; left -= 5) {
    if (errno != EWOULDBLOCK && errno != EINTR) return false;
    if (left <= 0) return false;
    nanosleep(&kPause, nullptr);
  }
  return true;
}

}  // namespace

std::string session_directory(std::string& said) {
  const std::string session = directory_of_session();
  std::string directory = session.empty() ? "/tmp/olh-" + std::to_string(geteuid()) : path_in(session, "olh");
  mkdir(directory.c_str(), kOwnDirectory);
  if (belongs_to_user_alone(directory)) return directory;
  said = directory + " is not a directory of this user alone";
  return "";
}

int open_own(const std::string& path, int flags) {
  return open(path.c_str(), flags | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, kOwnFile);
}

LockedFile::LockedFile(const std::string& path, int milliseconds) : fd_(open_own(path, O_RDWR | O_CREAT)) {
  if (fd_ < 0 || wait_for_lock(fd_, milliseconds)) return;
  close(fd_);
  fd_ = -1;
}

LockedFile::~LockedFile() {
  if (fd_ >= 0) close(fd_);
}

bool LockedFile::is_at(const std::string& path) const {
  struct stat own = {};
  struct stat there = {};
  return fstat(fd_, &own) == 0 && lstat(path.c_str(), &there) == 0 && own.st_dev == there.st_dev &&
         own.st_ino == there.st_ino;
}

bool LockedFile::write(const std::string& text) const {
  return ftruncate(fd_, 0) == 0 && pwrite(fd_, text.data(), text.size(), 0) == static_cast<ssize_t>(text.size());
}

}  // namespace olh_viewers
