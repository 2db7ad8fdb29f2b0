// One blocking TCP connection to a web server.
//
// Knows    the system calls: resolving, connecting, sending and receiving, interrupted or not.
// Not      what is sent and what an answer means (url_probe).
// Owns     its descriptor.
// For      the URL probe.
#ifndef OLH_DOCLIST_HTTP_SOCKET_H
#define OLH_DOCLIST_HTTP_SOCKET_H

#include <netinet/in.h>
#include <sys/types.h>

#include <cstddef>
#include <string_view>

#include "unique_fd.h"

namespace olh {

// Fills in the first address of a host. Returns false for an unknown host. Leaves the static result of
// gethostbyname alone: that belongs to the host program.
bool resolve_server(const char* host, int port, sockaddr_in& server);

// Every operation that returns bool returns whether it went well.
class HttpSocket {
 public:
  bool open() noexcept;
  // To any local address and port.
  bool bind() noexcept;
  bool connect(const sockaddr_in& server) noexcept;
  // In one write. A peer that is gone raises no SIGPIPE.
  bool send(std::string_view request) noexcept;
  // Returns the number of bytes; 0 or less at the end or after an error.
  ssize_t receive(char* chunk, std::size_t size) noexcept;

 private:
  UniqueFd fd_;
};

}  // namespace olh

#endif
