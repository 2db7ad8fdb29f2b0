// The system calls of the URL probe.
//
// Knows    that a signal of the host may interrupt each of them, and that an interrupted connect goes on by itself.
// Not      the request and the answer (url_probe).
#include "http_socket.h"

#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <vector>

#include "retry.h"

namespace olh {

namespace {

const sockaddr* address_of(const sockaddr_in& address) noexcept {
  return reinterpret_cast<const sockaddr*>(&address);
}

// After EINTR the kernel goes on connecting; a second connect would report that, not the outcome.
bool is_connected_later(int fd) noexcept {
  pollfd entry = {.fd = fd, .events = POLLOUT, .revents = 0};
  int error = 0;
  socklen_t size = sizeof error;
  return retry_interrupted([&entry] { return ::poll(&entry, 1, -1); }) == 1 &&
         getsockopt(fd, SOL_SOCKET, SO_ERROR, &error, &size) == 0 && error == 0;
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
  server = {};
  // An address of another family is refused by connect.
  server.sin_family = static_cast<sa_family_t>(found->h_addrtype);
  server.sin_port = htons(static_cast<in_port_t>(port));
  std::memcpy(&server.sin_addr, found->h_addr_list[0],
              std::min(static_cast<std::size_t>(found->h_length), sizeof server.sin_addr));
  return true;
}

bool HttpSocket::open() noexcept {
  fd_ = UniqueFd(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  return static_cast<bool>(fd_);
}

bool HttpSocket::bind() noexcept {
  sockaddr_in local = {};
  local.sin_family = AF_INET;
  return ::bind(fd_.get(), address_of(local), sizeof local) == 0;
}

bool HttpSocket::connect(const sockaddr_in& server) noexcept {
  if (::connect(fd_.get(), address_of(server), sizeof server) == 0) return true;
  return errno == EINTR && is_connected_later(fd_.get());
}

bool HttpSocket::send(std::string_view request) noexcept {
  return retry_interrupted([&] { return ::send(fd_.get(), request.data(), request.size(), MSG_NOSIGNAL); }) >= 0;
}

ssize_t HttpSocket::receive(char* chunk, std::size_t size) noexcept {
  return retry_interrupted([&] { return ::recv(fd_.get(), chunk, size, 0); });
}

}  // namespace olh
