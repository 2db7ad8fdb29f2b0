// What a request asks for: a root by its token, and what lies below it.
//
// Knows    which targets of a request name a file at all, and which hosts are this machine.
// Not      which roots there are (serve_state) and what lies there (rooted_file): no file is touched.
// For      page_server, and its fuzz target.
#ifndef OLH_TOOLS_SERVE_REQUEST_PATH_H
#define OLH_TOOLS_SERVE_REQUEST_PATH_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace olh_serve {

// 128 bits in hexadecimal.
inline constexpr std::size_t kTokenLength = 32;
bool is_token(std::string_view text);

struct RequestedPath {
  std::string token;
  std::vector<std::string> names;  // folders and the file, decoded; none of them is hidden, "..", or holds a "/"
  bool is_folder = false;          // it ends with "/": the folder's start page is meant
  bool asks_for_changes = false;   // not the page is meant, but whether something in `names` has changed
};

// The target of a request line, query and all; nothing when it can name no file that is served.
std::optional<RequestedPath> requested_path(std::string_view target);

// The way back: the path of an address, with "/" in front.
std::string path_of_request(const RequestedPath& path);

// Whether the Host header names this machine, by an address or by "localhost", with any port.
bool is_loopback_host(std::string_view host);

}  // namespace olh_serve

#endif
