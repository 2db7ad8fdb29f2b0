// The server: HTTP on the loopback address, and what each request is answered with.
//
// Knows    which requests are refused, and the headers that keep a page to itself.
// Not      which files a request may name (request_path) and reach (rooted_file); when the server ends (serve_background).
// For      main and serve_background.
#ifndef OLH_TOOLS_SERVE_PAGE_SERVER_H
#define OLH_TOOLS_SERVE_PAGE_SERVER_H

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "serve_state.h"

namespace olh_serve {

struct PageServerOptions {
  std::function<std::vector<olh_viewers::ServedRoot>()> roots;  // asked with every request
  bool reload = false;                                          // open pages follow their manual's changes
  // Asked now and then, with the seconds since the last request for a root: whether it is time to end.
  std::function<bool(long idle)> is_over = [](long) { return false; };
};

class PageServer {
 public:
  explicit PageServer(PageServerOptions options);
  ~PageServer();

  // Its address, "http://127.0.0.1:PORT"; "" when the port is taken. 0 stands for any free port.
  std::string bind(int port);
  // Serves until `is_over` says so.
  void run();

 private:
  class Core;
  std::unique_ptr<Core> core_;
};

}  // namespace olh_serve

#endif
