#include "unique_fd.h"

#include <fcntl.h>
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

}  // namespace olh
