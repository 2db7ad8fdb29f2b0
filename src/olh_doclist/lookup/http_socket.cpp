// The system calls of the URL probe.
//
// Knows    that a signal of the host may interrupt each of them, that an interrupted connect goes on by itself, and that
//          with a deadline nothing but poll waits.
// Not      the request and the answer (url_probe).
#include "http_socket.h"

#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <limits>
#include <vector>

#include "retry.h"

namespace olh {

namespace {

const sockaddr* address_of(const sockaddr_in& address) noexcept {
  return reinterpret_cast<const sockaddr*>(&address);
}

}  // namespace

bool resolve_server(const char* host, int port, sockaddr_in& server) {
  constexpr std::size_t kUsual = 4096;
  constexpr std::size_t kLargest = 1024 * 1024;
  hostent entry = {};
  hostent* found = nullptr;
  std::vector<char> buffer(kUsual);
  int error = 0;
  while (gethostbyname_r(host, &entry, buffer.data(), buffer.size(), &found, &error) == ERANGE &&
         buffer.size() < kLargest)
    buffer.resize(buffer.size() * 2);
  if (found == nullptr || found->h_addr_list[0] == nullptr) return false;
  // An address of another family is refused by connect.
  server.sin_family = static_cast<sa_family_t>(found->h_addrtype);
  server.sin_port = htons(static_cast<in_port_t>(port));
  std::memcpy(&server.sin_addr, found->h_addr_list[0],
              std::min(static_cast<std::size_t>(found->h_length), sizeof server.sin_addr));
  return true;
}

HttpSocket::HttpSocket(TimeLimit limit) noexcept {
  if (limit) end_ = Clock::now() + std::chrono::duration_cast<Clock::duration>(*limit);
}

bool HttpSocket::is_too_late() const noexcept { return end_ && Clock::now() >= *end_; }

// As poll takes them: -1 for as long as it takes. Rounded up, so that poll does not give up before the end.
int HttpSocket::milliseconds_left() const noexcept {
  using std::chrono::milliseconds;
  if (!end_) return -1;
  const milliseconds left = std::chrono::ceil<milliseconds>(*end_ - Clock::now());
  return static_cast<int>(std::clamp<milliseconds::rep>(left.count(), 0, std::numeric_limits<int>::max()));
}

// Returns false when it is too late, also for what has arrived.
bool HttpSocket::wait_for(short events) noexcept {
  pollfd entry = {.fd = fd_.get(), .events = events, .revents = 0};
  return !is_too_late() && retry_interrupted([&] { return ::poll(&entry, 1, milliseconds_left()); }) == 1;
}

// The kernel goes on connecting; a second connect would report that, not the outcome.
bool HttpSocket::is_connected_later() noexcept {
  int error = 0;
  socklen_t size = sizeof error;
  return wait_for(POLLOUT) && getsockopt(fd_.get(), SOL_SOCKET, SO_ERROR, &error, &size) == 0 && error == 0;
}

bool HttpSocket::open() noexcept {
  const int non_blocking = end_ ? SOCK_NONBLOCK : 0;
  fd_ = UniqueFd(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | non_blocking, 0));
  return static_cast<bool>(fd_);
}

bool HttpSocket::bind() noexcept {
  sockaddr_in local = {};
  local.sin_family = AF_INET;
  return ::bind(fd_.get(), address_of(local), sizeof local) == 0;
}

bool HttpSocket::connect(const sockaddr_in& server) noexcept {
  if (::connect(fd_.get(), address_of(server), sizeof server) == 0) return true;
  return (errno == EINTR || errno == EINPROGRESS) && is_connected_later();
}

// A request is far smaller than what the system takes without waiting.
bool HttpSocket::send(std::string_view request) noexcept {
  return retry_interrupted([&] { return ::send(fd_.get(), request.data(), request.size(), MSG_NOSIGNAL); }) >= 0;
}

ssize_t HttpSocket::receive(char* chunk, std::size_t size) noexcept {
  ssize_t got = -1;
  do {
    if (end_ && !wait_for(POLLIN)) return -1;
    got = retry_interrupted([&] { return ::recv(fd_.get(), chunk, size, 0); });
  } while (end_ && got < 0 && errno == EAGAIN);
  return got;
}

}  // namespace olh
