#include "request.h"

namespace olh_viewers {

namespace {

constexpr std::string_view kOpenBegin = "openURL(";
constexpr std::string_view kOpenEnd = ",new-tab)";

}  // namespace

BrowserRequest parse_browser_request(Words arguments) {
  using Kind = BrowserRequest::Kind;
  BrowserRequest request;
  for (; !arguments.empty() && arguments[0].starts_with("--"); arguments.erase(arguments.begin())) {
    const std::string& option = arguments[0];
    if (option == "--help") return {Kind::kHelp, "", false, false};
    if (option == "--version") return {Kind::kVersion, "", false, false};
    if (option != "--text" && option != "--dry-run") return {};
    request.as_text = request.as_text || option == "--text";
    request.dry_run = request.dry_run || option == "--dry-run";
  }
  if (arguments.empty()) {
    request.kind = request.as_text ? Kind::kWrong : Kind::kStart;
  } else if (arguments.size() == 1) {
    // The launcher hands over "" when it has no address.
    request.url = arguments[0];
    request.kind = request.url.empty() && !request.as_text ? Kind::kStart : Kind::kOpen;
  } else if (arguments.size() == 2 && arguments[0] == "-remote" && arguments[1] == "ping()") {
    request.kind = Kind::kPing;
  } else if (arguments.size() == 2 && arguments[0] == "-remote") {
    std::string_view command = arguments[1];
    // From its two ends: the address may hold what looks like either.
    if (!command.starts_with(kOpenBegin) || !command.ends_with(kOpenEnd)) return {};
    command.remove_prefix(kOpenBegin.size());
    command.remove_suffix(kOpenEnd.size());
    request.url = command;
    request.kind = request.url.empty() ? Kind::kStart : Kind::kRemote;
  }
  return request;
}

}  // namespace olh_viewers
