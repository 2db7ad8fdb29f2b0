#include "unique_fd.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace olh {

namespace {
constexpr int kFirstOwnDescriptor = 3;
}

UniqueFd::UniqueFd(int fd) noexcept : fd_(fd) {
  if (fd_ < 0 || fd_ >= kFirstOwnDescriptor) return;
  const int moved = fcntl(fd_, F_DUPFD_CLOEXEC, kFirstOwnDescriptor);
  ::close(fd_);
  fd_ = moved;
}

bool UniqueFd::close() noexcept {
  const int fd = std::exchange(fd_, -1);
  // After EINTR the descriptor is closed all the same on Linux: a second close could hit somebody else's.
  return fd < 0 || ::close(fd) == 0 || errno == EINTR;
}

UniqueFd open_regular_file(const char* path) noexcept {
  UniqueFd file(::open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  struct stat status = {};
  if (!file || fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) return UniqueFd();
  return file;
}

}  // namespace olh
