#include "web_text.h"

#include <fcntl.h>
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <chrono>

#include "words.h"

namespace olh {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::string_view kScheme = "http://";
constexpr auto kLongestTime = std::chrono::seconds(10);
constexpr std::size_t kMostBytes = 16 * 1024 * 1024;

struct Address {
  std::string host;
  std::string port = "80";
  std::string path;
};

std::optional<Address> address_in(std::string_view url) {
  const auto is_blank = [](char c) { return static_cast<unsigned char>(c) <= ' ' || c == '\x7f'; };
  if (!url.starts_with(kScheme) || std::any_of(url.begin(), url.end(), is_blank)) return std::nullopt;
  url.remove_prefix(kScheme.size());
  const std::size_t slash = std::min(url.find('/'), url.size());
  const std::string_view server = url.substr(0, slash);
  Address address;
  address.path = slash < url.size() ? url.substr(slash) : "/";
  address.host = server.substr(0, server.find(':'));
  if (address.host.size() + 1 < server.size()) address.port = server.substr(address.host.size() + 1);
  return address.host.empty() ? std::nullopt : std::optional<Address>(address);
}

// A connection that never waits beyond one point in time.
class Connection {
 public:
  explicit Connection(Clock::time_point end) : end_(end) {}
  ~Connection() { drop(); }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  bool open(const Address& address) {
    addrinfo wanted = {};
    wanted.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (getaddrinfo(address.host.c_str(), address.port.c_str(), &wanted, &found) != 0) return false;
    bool connected = false;
    for (const addrinfo* one = found; one != nullptr && !connected; one = one->ai_next) connected = connect_to(*one);
    freeaddrinfo(found);
    return connected;
  }

  bool send_all(std::string_view text) {
    while (!text.empty()) {
      const ssize_t count = send(socket_, text.data(), text.size(), MSG_NOSIGNAL);
      if (count < 0 && !may_go_on(POLLOUT)) return false;
      if (count > 0) text.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
  }

  // Everything up to the end that the server makes.
  std::optional<std::string> receive_all() {
    std::string text;
    char block[16384];
    while (text.size() <= kMostBytes) {
      const ssize_t count = recv(socket_, block, sizeof block, 0);
      if (count == 0) return text;
      if (count < 0 && !may_go_on(POLLIN)) return std::nullopt;
      if (count > 0) text.append(block, static_cast<std::size_t>(count));
    }
    return std::nullopt;
  }

 private:
  bool connect_to(const addrinfo& address) {
    drop();
    socket_ = socket(address.ai_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, address.ai_protocol);
    if (socket_ < 0) return false;
    if (connect(socket_, address.ai_addr, address.ai_addrlen) == 0) return true;
    if (errno != EINPROGRESS || !is_ready(POLLOUT)) return false;
    int failed = 0;
    socklen_t size = sizeof failed;
    return getsockopt(socket_, SOL_SOCKET, SO_ERROR, &failed, &size) == 0 && failed == 0;
  }

  // After a call that could do nothing: whether it may be tried again.
  bool may_go_on(short event) const { return errno == EINTR || (errno == EAGAIN && is_ready(event)); }

  bool is_ready(short event) const {
    for (;;) {
      const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end_ - Clock::now()).count();
      pollfd waited = {socket_, event, 0};
      const int ready = poll(&waited, 1, static_cast<int>(std::max<long long>(left, 0)));
      if (ready >= 0 || errno != EINTR) return ready > 0;
    }
  }

  void drop() {
    if (socket_ >= 0) close(socket_);
    socket_ = -1;
  }

  Clock::time_point end_;
  int socket_ = -1;
};

// The value of a header line; its name in lower case.
std::optional<std::string> header_value(std::string_view head, std::string_view name) {
  for (const std::string& line : olh_viewers::lines_of(head)) {
    const std::size_t colon = line.find(':');
    if (colon == std::string::npos || olh_viewers::lower_case(line.substr(0, colon)) != name) continue;
    return line.substr(std::min(line.find_first_not_of(' ', colon + 1), line.size()));
  }
  return std::nullopt;
}

}  // namespace

std::optional<std::string> body_of(std::string_view answer) {
  constexpr std::string_view kVersion = "HTTP/1.";
  constexpr std::string_view kEndOfHead = "\r\n\r\n";
  const std::size_t end = answer.find(kEndOfHead);
  if (end == std::string_view::npos || !answer.starts_with(kVersion)) return std::nullopt;
  const std::string_view head = answer.substr(0, end);
  const std::string_view body = answer.substr(end + kEndOfHead.size());
  if (head.size() <= kVersion.size() || !head.substr(kVersion.size() + 1).starts_with(" 200")) return std::nullopt;
  if (header_value(head, "transfer-encoding")) return std::nullopt;  // not asked for, and not whole as it is
  std::size_t announced = body.size();
  if (const auto length = header_value(head, "content-length"))
    std::from_chars(length->data(), length->data() + length->size(), announced);
  if (body.size() < announced) return std::nullopt;
  return std::string(body);
}

std::optional<std::string> web_text(const std::string& url) {
  const std::optional<Address> address = address_in(url);
  if (!address) return std::nullopt;
  Connection connection(Clock::now() + kLongestTime);
  const std::string host = address->host + (address->port == "80" ? "" : ":" + address->port);
  const std::string request = "GET " + address->path + " HTTP/1.0\r\nHost: " + host + "\r\n\r\n";
  if (!connection.open(*address) || !connection.send_all(request)) return std::nullopt;
  const std::optional<std::string> answer = connection.receive_all();
  return answer ? body_of(*answer) : std::nullopt;
}

}  // namespace olh
