// A web server that answers as a test says, on a real socket of this machine.
#ifndef OLH_TESTS_HTTP_SERVER_H
#define OLH_TESTS_HTTP_SERVER_H

#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace olh_test {

// The answer on one connection.
struct HttpReply {
  enum End {
    kClose,     // after the pieces
    kStayOpen,  // until the client closes, ten seconds at most
    kReset,     // the client finds its connection reset
  };
  std::vector<std::string> pieces;  // sent one by one, with a pause after each but the last
  End end = kStayOpen;
};

// "HTTP/1.1 ", the status and the end of the header; the connection stays open.
HttpReply http_status(const std::string& status);

// Serves one connection after the other until it is destroyed.
class HttpServer {
 public:
  using Answer = std::function<HttpReply(const std::string& request)>;
  explicit HttpServer(Answer answer);
  // Answers 200 for these paths, 404 for the others.
  explicit HttpServer(std::vector<std::string> paths);
  ~HttpServer();
  HttpServer(const HttpServer&) = delete;
  HttpServer& operator=(const HttpServer&) = delete;

  int port() const { return port_; }
  // "http://127.0.0.1:PORT" and what follows.
  std::string url(const std::string& path) const;
  // Every byte that each connection sent, in the order of the connections. Waits until all of them have ended.
  std::vector<std::string> requests() const;
  // The paths of those requests.
  std::vector<std::string> requested_paths() const;

 private:
  void serve();
  void serve_connection(int connection);
  void wait_for_the_last_connection() const;

  Answer answer_;
  int listener_ = -1;
  int port_ = 0;
  mutable std::mutex mutex_;  // held as long as a connection lasts
  std::vector<std::string> requests_;
  std::thread thread_;
};

}  // namespace olh_test

#endif
