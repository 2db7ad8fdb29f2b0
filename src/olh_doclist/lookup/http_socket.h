// One TCP connection to a web server: as long as that likes, or with a limit to all that it does together.
//
// Knows    the system calls: resolving, connecting, sending and receiving, interrupted or not, blocking or up to a deadline.
// Not      what is sent and what an answer means, and who sets a limit (url_probe).
// Owns     its descriptor.
// For      the URL probe.
#ifndef OLH_DOCLIST_HTTP_SOCKET_H
#define OLH_DOCLIST_HTTP_SOCKET_H

#include <netinet/in.h>
#include <sys/types.h>

#include <chrono>
#include <cstddef>
#include <optional>
#include <string_view>

#include "unique_fd.h"

namespace olh {

// Fills an empty record with the first address of a host. Returns false for an unknown host. Leaves the static result of
// gethostbyname alone: that belongs to the host program. Nothing limits the time that this takes.
bool resolve_server(const char* host, int port, sockaddr_in& server);

// Every operation that returns bool returns whether it went well.
class HttpSocket {
 public:
  using TimeLimit = std::optional<std::chrono::duration<double>>;

  // The limit counts from here on. Without one every operation blocks.
  explicit HttpSocket(TimeLimit limit) noexcept;

  bool open() noexcept;
  // To any local address and port.
  bool bind() noexcept;
  bool connect(const sockaddr_in& server) noexcept;
  // In one write. A peer that is gone raises no SIGPIPE.
  bool send(std::string_view request) noexcept;
  // Returns the number of bytes; 0 or less at the end or after an error.
  ssize_t receive(char* chunk, std::size_t size) noexcept;

  // Whether the limit is over: then an operation that failed may have failed for that.
  bool is_too_late() const noexcept;

 private:
  using Clock = std::chrono::steady_clock;

  int milliseconds_left() const noexcept;
  bool wait_for(short events) noexcept;
  bool is_connected_later() noexcept;

  std::optional<Clock::time_point> end_;
  UniqueFd fd_;
};

}  // namespace olh

#endif
