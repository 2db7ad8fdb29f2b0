#include "peer_user.h"

#include <arpa/inet.h>
#include <linux/inet_diag.h>
#include <linux/netlink.h>
#include <linux/sock_diag.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <charconv>
#include <cstdint>
#include <cstring>
#include <optional>

#include "files.h"
#include "rooted_file.h"
#include "words.h"

namespace olh_serve {

namespace {

// A connection that its program has closed counts as root's; nobody reads from it any more.
bool is_trusted_end(uid_t owner, int state) { return owner == geteuid() || (owner == 0 && state == TCP_ESTABLISHED); }

struct Question {
  nlmsghdr header;
  inet_diag_req_v2 body;
};

Question question_about(const Endpoint& peer, const Endpoint& own) {
  Question question = {};
  question.header.nlmsg_len = sizeof question;
  question.header.nlmsg_type = SOCK_DIAG_BY_FAMILY;
  question.header.nlmsg_flags = NLM_F_REQUEST;
  question.body.sdiag_family = peer.address.find(':') == std::string::npos ? AF_INET : AF_INET6;
  question.body.sdiag_protocol = IPPROTO_TCP;
  question.body.idiag_states = ~0U;
  inet_diag_sockid& id = question.body.id;
  id.idiag_sport = htons(static_cast<std::uint16_t>(peer.port));
  id.idiag_dport = htons(static_cast<std::uint16_t>(own.port));
  inet_pton(question.body.sdiag_family, peer.address.c_str(), id.idiag_src);
  inet_pton(question.body.sdiag_family, own.address.c_str(), id.idiag_dst);
  id.idiag_cookie[0] = id.idiag_cookie[1] = static_cast<std::uint32_t>(INET_DIAG_NOCOOKIE);
  return question;
}

// What the kernel says of this one connection; nothing when it has no answer.
std::optional<bool> ask_kernel(const Endpoint& peer, const Endpoint& own) {
  const Descriptor socket(::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_SOCK_DIAG));
  const Question question = question_about(peer, own);
  if (send(socket.get(), &question, sizeof question, 0) != sizeof question) return std::nullopt;
  alignas(nlmsghdr) char reply[4096];
  const ssize_t size = recv(socket.get(), reply, sizeof reply, 0);
  nlmsghdr header;
  inet_diag_msg found;
  if (size < static_cast<ssize_t>(NLMSG_LENGTH(sizeof found))) return std::nullopt;
  std::memcpy(&header, reply, sizeof header);
  if (header.nlmsg_type != SOCK_DIAG_BY_FAMILY) return std::nullopt;
  std::memcpy(&found, reply + NLMSG_HDRLEN, sizeof found);
  return is_trusted_end(found.idiag_uid, found.idiag_state);
}

// A number at the end of a text, behind the last ":"; -1 without one.
int number_in(std::string_view text, int base) {
  text.remove_prefix(text.rfind(':') + 1);
  int number = -1;
  std::from_chars(text.data(), text.data() + text.size(), number, base);
  return number;
}

}  // namespace

// "  0: 0100007F:A2B4 0100007F:1F90 01 00000000:00000000 00:00000000 00000000  1000 ...": the end itself, the other end,
// the state, three more, and the owner.
bool is_peer_in_list_trusted(std::string_view list, int peer_port, int own_port) {
  for (const std::string& line : olh_viewers::pieces_of(list, '\n')) {
    const olh_viewers::Words fields = olh_viewers::pieces_of(line, ' ');
    constexpr std::size_t kOwner = 7;
    if (fields.size() <= kOwner || number_in(fields[1], 16) != peer_port || number_in(fields[2], 16) != own_port)
      continue;
    if (!is_trusted_end(static_cast<uid_t>(number_in(fields[kOwner], 10)), number_in(fields[3], 16))) return false;
  }
  return true;
}

bool is_peer_trusted(const Endpoint& peer, const Endpoint& own) {
  if (const std::optional<bool> answer = ask_kernel(peer, own)) return *answer;
  for (const char* list : {"/proc/net/tcp", "/proc/net/tcp6"})
    if (!is_peer_in_list_trusted(olh_viewers::content_of(list), peer.port, own.port)) return false;
  return true;
}

}  // namespace olh_serve
