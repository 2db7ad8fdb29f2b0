#include "http_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <stdexcept>

namespace olh_test {

namespace {

std::string path_of(const std::string& request) {
  const std::size_t begin = request.find(' ') + 1;
  return request.substr(begin, request.find(' ', begin) - begin);
}

// What the server's own last connection sends.
constexpr const char* kLastRequest = "LAST\r\n\r\n";

// Appends what arrives. Returns false at the end of the connection.
bool read_more(int connection, std::string& bytes) {
  char chunk[4096];
  const ssize_t size = recv(connection, chunk, sizeof chunk, 0);
  if (size > 0) bytes.append(chunk, static_cast<std::size_t>(size));
  return size > 0;
}

}  // namespace

HttpReply http_status(const std::string& status) {
  return {.pieces = {"HTTP/1.1 " + status + "\r\n\r\n"}, .end = HttpReply::kStayOpen};
}

HttpServer::HttpServer(Answer answer) : answer_(std::move(answer)) {
  listener_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address = {};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  auto* const generic = reinterpret_cast<sockaddr*>(&address);
  if (listener_ < 0 || bind(listener_, generic, size) != 0 || listen(listener_, 64) != 0 ||
      getsockname(listener_, generic, &size) != 0)
    throw std::runtime_error("no server socket");
  port_ = ntohs(address.sin_port);
  thread_ = std::thread([this] { serve(); });
}

HttpServer::HttpServer(std::vector<std::string> paths)
    : HttpServer([served = std::move(paths)](const std::string& request) {
        const bool there = std::find(served.begin(), served.end(), path_of(request)) != served.end();
        return http_status(there ? "200 OK" : "404 Not Found");
      }) {}

HttpServer::~HttpServer() {
  shutdown(listener_, SHUT_RDWR);
  thread_.join();
  close(listener_);
}

std::string HttpServer::url(const std::string& path) const {
  return "http://127.0.0.1:" + std::to_string(port_) + path;
}

// Connections are served one after the other: when this one has been closed, all before it have.
void HttpServer::wait_for_the_last_connection() const {
  sockaddr_in address = {};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port_));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  const int connection = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  std::string answer;
  if (connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
      send(connection, kLastRequest, std::strlen(kLastRequest), MSG_NOSIGNAL) > 0)
    while (read_more(connection, answer)) {
    }
  close(connection);
}

std::vector<std::string> HttpServer::requests() const {
  wait_for_the_last_connection();
  const std::lock_guard<std::mutex> lock(mutex_);
  return requests_;
}

std::vector<std::string> HttpServer::requested_paths() const {
  std::vector<std::string> paths;
  for (const std::string& request : requests()) paths.push_back(path_of(request));
  return paths;
}

void HttpServer::serve() {
  for (;;) {
    const int connection = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (connection < 0) return;
    serve_connection(connection);
    close(connection);
  }
}

void HttpServer::serve_connection(int connection) {
  const std::lock_guard<std::mutex> lock(mutex_);
  const int on = 1;
  const timeval patience = {.tv_sec = 10, .tv_usec = 0};
  setsockopt(connection, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
  setsockopt(connection, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
  std::string request;
  while (request.find("\r\n\r\n") == std::string::npos && read_more(connection, request)) {
  }
  if (request == kLastRequest) return;
  const HttpReply reply = answer_(request);
  for (std::size_t i = 0; i < reply.pieces.size(); ++i) {
    if (i > 0) std::this_thread::sleep_for(std::chrono::milliseconds(50));
    send(connection, reply.pieces[i].data(), reply.pieces[i].size(), MSG_NOSIGNAL);
  }
  if (reply.end == HttpReply::kReset) {
    const linger reset = {.l_onoff = 1, .l_linger = 0};
    setsockopt(connection, SOL_SOCKET, SO_LINGER, &reset, sizeof reset);
  }
  // What a client sends after its request shows too.
  while (reply.end == HttpReply::kStayOpen && read_more(connection, request)) {
  }
  requests_.push_back(request);
}

}  // namespace olh_test
