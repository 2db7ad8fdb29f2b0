#include "exclusive_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <ctime>
#include <utility>

#include "retry.h"

namespace olh {

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::seconds kPatience{1};
// Short, since a writer that is at it again and again leaves the name free for as short a time.
constexpr timespec kPause = {0, 100'000};
constexpr int kFlags = O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;

// Whether this descriptor has the lock now; if not, errno says why. Where a file system knows no locks, everybody has it.
bool is_locked(int fd) noexcept {
  return retry_interrupted([fd] { return flock(fd, LOCK_EX | LOCK_NB); }) == 0 || errno == ENOLCK ||
         errno == EOPNOTSUPP || errno == ENOSYS;
}

// Whether the name stands for the open file; another writer may have replaced it before it was locked.
bool is_at(int fd, const char* name) noexcept {
  struct stat open = {};
  struct stat named = {};
  return fstat(fd, &open) == 0 && lstat(name, &named) == 0 && open.st_dev == named.st_dev &&
         open.st_ino == named.st_ino;
}

// Opens what stands there, for its lock alone; some file systems lock only what may be written. Empty when it is a link, or
// nothing that may be opened.
UniqueFd open_for_lock(const char* name) noexcept {
  UniqueFd fd(::open(name, O_WRONLY | kFlags));
  return fd || errno != EACCES ? std::move(fd) : UniqueFd(::open(name, O_RDONLY | kFlags));
}

void pause_briefly() noexcept {
  const int error = errno;
  nanosleep(&kPause, nullptr);
  errno = error;
}

enum class Removal { kGone, kInUse, kStays };

// A link, a socket or the like, which no writer holds. Removers come after one another by a lock on the directory, so that
// none takes away what a writer has made in the place of what another one removed. A regular file that this process may
// not open can be a writer's.
Removal remove_special(const std::string& name) {
  const std::size_t slash = name.rfind('/');
  const std::string directory = slash == std::string::npos ? "." : name.substr(0, slash + 1);
  const UniqueFd lock(::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!lock) return Removal::kStays;
  if (!is_locked(lock.get())) return Removal::kInUse;
  struct stat status = {};
  if (lstat(name.c_str(), &status) != 0) return errno == ENOENT ? Removal::kGone : Removal::kStays;
  errno = S_ISDIR(status.st_mode) ? EISDIR : EACCES;
  if (S_ISREG(status.st_mode)) return Removal::kInUse;
  if (S_ISDIR(status.st_mode)) return Removal::kStays;
  return unlink(name.c_str()) == 0 ? Removal::kGone : Removal::kStays;
}

Removal remove_former(const std::string& name) {
  const UniqueFd former = open_for_lock(name.c_str());
  if (!former) return errno == ENOENT ? Removal::kGone : remove_special(name);
  if (!is_locked(former.get())) return Removal::kInUse;
  if (!is_at(former.get(), name.c_str())) return Removal::kGone;
  return unlink(name.c_str()) == 0 || errno == ENOENT ? Removal::kGone : Removal::kStays;
}

}  // namespace

UniqueFd create_exclusively(const std::string& name, mode_t mode) {
  const Clock::time_point end = Clock::now() + kPatience;
  do {
    UniqueFd fd(::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOCTTY, mode));
    if (fd && is_locked(fd.get())) {
      if (is_at(fd.get(), name.c_str())) return fd;
      continue;  // somebody took it for a leftover before it was locked
    }
    if (fd && errno == EWOULDBLOCK) continue;  // somebody takes it for one now
    if (fd) {                                  // nobody can be kept away from it
      const int error = errno;
      if (is_at(fd.get(), name.c_str())) unlink(name.c_str());
      errno = error;
      break;
    }
    if (errno != EEXIST) break;
    const Removal former = remove_former(name);
    if (former == Removal::kStays) break;
    if (former == Removal::kInUse) pause_briefly();
  } while (Clock::now() < end);
  return {};
}

UniqueFd open_exclusively(const std::string& name) {
  const Clock::time_point end = Clock::now() + kPatience;
  UniqueFd fd(::open(name.c_str(), O_WRONLY | kFlags));
  struct stat status = {};
  if (!fd || fstat(fd.get(), &status) != 0 || !S_ISREG(status.st_mode)) return {};
  for (; !is_locked(fd.get()); pause_briefly())
    if (Clock::now() >= end) return {};
  return is_at(fd.get(), name.c_str()) ? std::move(fd) : UniqueFd();  // another writer may have replaced it
}

}  // namespace olh
