// An open descriptor that is closed when it goes out of scope.
//
// Knows    that the library's descriptors are close-on-exec and lie above 2, so that a host with closed standard
//          streams never has its messages land in one of our files.
// For      every room that opens a file or a socket.
#ifndef OLH_COMMON_UNIQUE_FD_H
#define OLH_COMMON_UNIQUE_FD_H

#include <utility>

namespace olh {

class UniqueFd {
 public:
  UniqueFd() = default;
  // Takes an open descriptor (or -1). Moves it above 2 when it lies below.
  explicit UniqueFd(int fd) noexcept;
  UniqueFd(UniqueFd&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
  UniqueFd& operator=(UniqueFd&& other) noexcept {
    std::swap(fd_, other.fd_);
    return *this;
  }
  UniqueFd(const UniqueFd&) = delete;
  UniqueFd& operator=(const UniqueFd&) = delete;
  ~UniqueFd() { close(); }

  explicit operator bool() const noexcept { return fd_ >= 0; }
  int get() const noexcept { return fd_; }
  // Closes now. Returns whether that went well, which for a written file is part of writing it.
  bool close() noexcept;
  // Hands the descriptor on, to a stream for example; the caller closes it.
  int release() noexcept { return std::exchange(fd_, -1); }

 private:
  int fd_ = -1;
};

}  // namespace olh

#endif
