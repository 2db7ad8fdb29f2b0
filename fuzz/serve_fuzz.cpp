// What a request asks olh-serve for: whatever stands in its target, nothing but names below a root comes of it.
#include <algorithm>

#include "fuzz.h"
#include "olh-serve/request_path.h"

namespace {

using namespace olh_serve;

void check_target(const std::string& target) {
  const std::optional<RequestedPath> path = requested_path(target);
  if (!path) return;
  expect(is_token(path->token) && target.starts_with("/" + path->token), "the token is the first thing in the path");
  for (const std::string& name : path->names) {
    expect(!name.empty() && name[0] != '.', "no name leads upwards or to what is hidden");
    const auto ends_name = [](char c) { return c == '/' || static_cast<unsigned char>(c) < 0x20 || c == 0x7f; };
    expect(std::none_of(name.begin(), name.end(), ends_name), "a name is one name");
  }
  const std::string back = path_of_request(*path);
  expect(back.find_first_of("?#\r\n\"'<> ") == std::string::npos, "an address can stand in a header and in a page");
  const std::optional<RequestedPath> again = requested_path(back);
  expect(again && again->token == path->token && again->names == path->names &&
             again->asks_for_changes == path->asks_for_changes && again->is_folder == path->is_folder,
         "a path and back");
}

void check_host(const std::string& host) {
  if (!is_loopback_host(host)) return;
  const std::size_t end = host.find_last_not_of("0123456789");
  const std::string name = host.ends_with("127.0.0.1") || host[end] != ':' ? host : host.substr(0, end);
  expect(name == "127.0.0.1" || name == "localhost" || name == "[::1]", "a host is this machine");
}

}  // namespace

void try_input(const std::string& input) {
  const std::vector<std::string> parts = parts_of(input, 2);
  check_target(parts[0]);
  check_host(parts[1]);
}
