// The user behind a connection.
//
// Knows    how the system tells to whom the other end of a connection on this machine belongs. An address alone keeps
//          nobody out: whoever lists the processes of this machine sees it in the command line of a browser.
// For      page_server.
#ifndef OLH_TOOLS_SERVE_PEER_USER_H
#define OLH_TOOLS_SERVE_PEER_USER_H

#include <string>
#include <string_view>

namespace olh_serve {

// A socket's address and port.
struct Endpoint {
  std::string address;
  int port;
};

// Whether the peer's end belongs to this user, or to root, whose relays lead in from elsewhere (WSL, some editors). Also
// where the system cannot tell.
bool is_peer_trusted(const Endpoint& peer, const Endpoint& own);

// The same from the system's list of connections, as /proc/net/tcp has it. Every line with these ports counts.
bool is_peer_in_list_trusted(std::string_view list, int peer_port, int own_port);

}  // namespace olh_serve

#endif
