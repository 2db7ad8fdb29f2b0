#include "request_path.h"

#include <algorithm>
#include <array>

#include "url.h"

namespace olh_serve {

namespace {

// A name that no document can have, since hidden files are not served.
constexpr std::string_view kChanges = ".changes";
constexpr std::size_t kLongestName = 255;
constexpr std::size_t kLongestPort = 5;

bool is_digit(char c) { return c >= '0' && c <= '9'; }

bool is_visible_name(std::string_view name) {
  return !name.empty() && name.size() <= kLongestName && name[0] != '.' && name.find('/') == std::string_view::npos &&
         olh_viewers::objection_to_text(name).empty();
}

// The text up to the next "/", which is taken off with it.
std::string_view next_part(std::string_view& path) {
  const std::string_view part = path.substr(0, path.find('/'));
  path.remove_prefix(std::min(path.size(), part.size() + 1));
  return part;
}

}  // namespace

bool is_token(std::string_view text) {
  return text.size() == kTokenLength &&
         std::all_of(text.begin(), text.end(), [](char c) { return is_digit(c) || (c >= 'a' && c <= 'f'); });
}

//   target                          becomes
//   /TOKEN/htmldocs/a%20b/x.htm?q   TOKEN, htmldocs, "a b", x.htm
//   /TOKEN/htmldocs/guide/          TOKEN, htmldocs, guide: the folder
//   /TOKEN                          TOKEN: the root without its "/"
//   /TOKEN/.changes/htmldocs/guide  TOKEN, htmldocs, guide: whether it has changed
//   /TOKEN/../x  /TOKEN//x  /TOKEN/.git/x  /TOKEN/a%2fb  /TOKEN/a%00  http://h/TOKEN/x     nothing
std::optional<RequestedPath> requested_path(std::string_view target) {
  if (!target.starts_with('/') || target.find('#') != std::string_view::npos) return std::nullopt;
  std::string_view rest = target.substr(1, target.find('?') - 1);
  RequestedPath path;
  path.token = next_part(rest);
  if (!is_token(path.token)) return std::nullopt;
  path.is_folder = target.substr(0, target.find('?')).ends_with('/');
  while (!rest.empty()) {
    std::string name = olh_viewers::decoded(next_part(rest));
    if (path.names.empty() && !path.asks_for_changes && name == kChanges) {
      path.asks_for_changes = true;
    } else if (is_visible_name(name)) {
      path.names.push_back(std::move(name));
    } else {
      return std::nullopt;
    }
  }
  return path;
}

std::string path_of_request(const RequestedPath& path) {
  std::string text = "/" + path.token;
  if (path.asks_for_changes) text.append("/").append(kChanges);
  for (const std::string& name : path.names) text += "/" + olh_viewers::percent_encoded(name);
  return path.is_folder ? text + "/" : text;
}

bool is_loopback_host(std::string_view host) {
  constexpr std::array<std::string_view, 3> kNames = {"127.0.0.1", "localhost", "[::1]"};
  return std::any_of(kNames.begin(), kNames.end(), [host](std::string_view name) {
    if (!host.starts_with(name)) return false;
    const std::string_view port = host.substr(name.size());
    return port.empty() || (port[0] == ':' && port.size() > 1 && port.size() <= kLongestPort + 1 &&
                            std::all_of(port.begin() + 1, port.end(), is_digit));
  });
}

}  // namespace olh_serve
