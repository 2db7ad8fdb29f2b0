// One probe of a URL on a server on this machine, against a bare HEAD request by a client that does nothing else.
#include <arpa/inet.h>
#include <benchmark/benchmark.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstring>
#include <string>
#include <thread>

#include "olh_doclist.h"

namespace {

// Answers every connection with one fixed reply, until the process ends.
class Server {
 public:
  Server() : listener_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    if (bind(listener_, reinterpret_cast<sockaddr*>(&address), size) != 0 || listen(listener_, 64) != 0 ||
        getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size) != 0)
      std::abort();
    std::thread([this] { answer(); }).detach();
  }
  sockaddr_in address = {};

 private:
  void answer() const {
    static constexpr char kReply[] = "HTTP/1.1 200 OK\r\nServer: bench\r\nContent-Length: 0\r\n\r\n";
    char request[1024];
    while (true) {
      const int client = accept(listener_, nullptr, nullptr);
      if (client < 0) continue;
      if (read(client, request, sizeof request) > 0 && write(client, kReply, sizeof kReply - 1) < 0) std::abort();
      close(client);
    }
  }
  int listener_;
};

Server& server() {
  static Server instance;
  return instance;
}

void probe_library(benchmark::State& state) {
  olh_docList locator;
  const std::string url = "http://127.0.0.1:" + std::to_string(ntohs(server().address.sin_port)) + "/docs/index.htm";
  for (auto _ : state)
    if (locator.ValidURL(url.c_str()) != 1) return state.SkipWithError("refused");
}

void probe_floor(benchmark::State& state) {
  static constexpr char kRequest[] = "HEAD /docs/index.htm HTTP/1.1\r\nHOST: 127.0.0.1\r\n\r\n";
  char reply[10000];
  for (auto _ : state) {
    const int client = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (connect(client, reinterpret_cast<sockaddr*>(&server().address), sizeof(sockaddr_in)) != 0 ||
        write(client, kRequest, sizeof kRequest - 1) < 0)
      return state.SkipWithError("refused");
    const ssize_t size = read(client, reply, sizeof reply - 1);
    reply[size > 0 ? size : 0] = '\0';
    benchmark::DoNotOptimize(std::strstr(reply, "HTTP/1.1 200 OK"));
    close(client);
  }
}

}  // namespace

BENCHMARK(probe_library)->Name("probe/library");
BENCHMARK(probe_floor)->Name("probe/floor");
