// The probe: does a web server have this page? One HEAD request, one connection, judged by the status line.
//
// Knows    how a URL splits, the request, which answers count, and the variable that limits the time for one.
// Not      the system calls (http_socket), which pages make a root (root_options) or a document (the lookups).
// For      this room.
//
//   URL                      host, port, path
//   http://h/docs/x.pdf      h, 80, /docs/x.pdf
//   http://h:8080/x?a#b      h, 8080, /x?a#b
//   http://h/a:b             h, 80, /a:b            a ":" without a number behind it, or in the path, is no port
//   http://h/a b             h, 80, /a b            sent as it is
//   http://h                 refused                no path
//   https://h/x  HTTP://h/x  refused                another protocol
#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>

#include "bounded_text.h"
#include "http_socket.h"
#include "olh/support.h"
#include "olh_doclist.h"

namespace olh {

namespace {

constexpr std::size_t kPartSize = 512;       // host, path and request, with their NUL
constexpr std::size_t kLongestUrl = 2048;    // as far as a URL is looked at
constexpr std::size_t kLongestScheme = 512;  // as far as a wrong one is shown
constexpr std::size_t kChunkSize = 10000;
constexpr int kHttpPort = 80;
constexpr int kLastPort = 65535;
constexpr double kLongestWait = 1e6;  // seconds; more is the same

// The port behind the ":" of "host:port". Without a number it is the default one; a larger one than an int holds is
// the largest, which no server has either.
int port_in(std::string_view host_and_port) noexcept {
  const std::size_t colon = host_and_port.find(':');
  if (colon == std::string_view::npos) return kHttpPort;
  int port = 0;
  const char* const end = host_and_port.data() + host_and_port.size();
  const std::errc error = std::from_chars(host_and_port.data() + colon + 1, end, port).ec;
  if (error == std::errc::invalid_argument) return kHttpPort;
  return error == std::errc() ? port : std::numeric_limits<int>::max();
}

// The number of seconds in a variable's value; no limit unless all of it is one positive number.
HttpSocket::TimeLimit limit_from(std::string_view value) noexcept {
  double seconds = 0;
  const char* const end = value.data() + value.size();
  const std::from_chars_result read = std::from_chars(value.data(), end, seconds);
  if (read.ec != std::errc() || read.ptr != end || !(seconds > 0)) return std::nullopt;
  return std::chrono::duration<double>(std::min(seconds, kLongestWait));
}

// A line end in a name would begin another header line. Everything else goes out as it is: a server may take it.
bool is_one_line(std::string_view url) noexcept { return url.find_first_of("\r\n") == std::string_view::npos; }

std::string head_request(std::string_view host, std::string_view path) {
  std::string request("HEAD ");
  return request.append(path).append(" HTTP/1.1\r\nHOST: ").append(host).append("\r\n\r\n");
}

int judge(std::string_view answer) {
  if (answer.find("HTTP/1.1 404 Not Found") != std::string_view::npos) {
    print_debug("olh_docList::ValidURL: failed: HTTP/1.1 404 Not Found\n");
    return 0;
  }
  if (answer.find("HTTP/1.1 200 OK") != std::string_view::npos) return 1;
  print_debug("olh_docList::ValidURL: failed: HTTP error: %.*s\n", static_cast<int>(answer.size()), answer.data());
  return 0;
}

int failed(const HttpSocket& socket, const char* why) noexcept {
  if (socket.is_too_late())
    print_debug("olh_docList::ValidURL: failed: no answer within OLH_PROBE_TIMEOUT\n");
  else if (why != nullptr)
    print_debug("olh_docList::ValidURL: failed: %s\n", why);
  return 0;
}

// The first chunk that holds a status line decides, and nothing more is read. A server that sends none before it
// closes the connection has no such page.
int judge_reply(HttpSocket& socket) {
  char chunk[kChunkSize];
  for (ssize_t size = socket.receive(chunk, kChunkSize); size > 0; size = socket.receive(chunk, kChunkSize)) {
    const std::string_view text(chunk, strnlen(chunk, static_cast<std::size_t>(size)));
    if (text.find("HTTP/1.1") != std::string_view::npos) return judge(text);
  }
  return failed(socket, nullptr);
}

// Every return closes the connection.
int ask(const char* url, const char* host, int port, std::string_view request, HttpSocket::TimeLimit limit) {
  sockaddr_in server = {};
  if (!resolve_server(host, port, server)) {
    print_debug("olh_docList::ValidURL: failed: unknown host: %s\n", host);
    return 0;
  }
  HttpSocket socket(limit);
  if (!socket.open()) return failed(socket, "cannot open socket");
  if (!socket.bind()) {
    print_debug("olh_docList::ValidURL: failed: %s: cannot bind port TCP %u\n", url, static_cast<unsigned>(port));
    return 0;
  }
  if (port < 1 || port > kLastPort || !socket.connect(server)) return failed(socket, "cannot connect");
  if (!socket.send(request)) return failed(socket, "cannot send data");
  return judge_reply(socket);
}

}  // namespace

}  // namespace olh

int olh_docList::ParseURL(const char* url, char* host, int* port, char* path) {
  const std::string_view text = olh::text_of(url).substr(0, olh::kLongestUrl);
  const std::size_t colon = text.find(':');
  if (colon == std::string_view::npos) {
    print_debug("olh_docList::ParseURL: Invalid url: no protocol specified\n");
    return 0;
  }
  const std::string scheme(text.substr(0, std::min(colon, olh::kLongestScheme)));
  if (scheme != "http") {
    print_debug("olh_docList::ParseURL: Invalid protocol: %s\n", scheme.c_str());
    return 0;
  }
  const std::size_t slashes = text.find("//");
  if (slashes == std::string_view::npos) {
    print_debug("olh_docList::ParseURL: Invalid url: no server specified\n");
    return 0;
  }
  const std::string_view remainder = text.substr(slashes + 2);
  const std::size_t slash = remainder.find('/');
  if (slash == std::string_view::npos) {
    print_debug("olh_docList::ParseURL: Invalid url: no path specified\n");
    return 0;
  }
  const std::string_view host_and_port = remainder.substr(0, slash);
  *port = olh::port_in(host_and_port);
  const bool whole = olh::write_buffer(host, host_and_port.substr(0, host_and_port.find(':')), olh::kPartSize) &&
                     olh::write_buffer(path, remainder.substr(slash), olh::kPartSize);
  return whole ? 1 : 0;
}

int olh_docList::ValidURL(const char* url) {
  const std::string_view text = olh::text_of(url);
  print_debug("olh_docList::ValidURL: %s\n", text.empty() ? "" : url);
  char host[olh::kPartSize] = "";
  char path[olh::kPartSize] = "";
  int port = 0;
  std::string request;
  if (ParseURL(url, host, &port, path) == 1) request = olh::head_request(host, path);
  if (request.empty() || request.size() >= olh::kPartSize || !olh::is_one_line(text)) {
    print_debug("olh_docList::ValidURL: failed: url parse error\n");
    return 0;
  }
  print_debug("olh_docList::ValidURL: host: %s, port: %d, path: %s\n", host, port, path);
  return olh::ask(url, host, port, request, olh::limit_from(olh::text_of(FindOlhVariable("OLH_PROBE_TIMEOUT"))));
}
