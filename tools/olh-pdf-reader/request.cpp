#include "request.h"

namespace olh_viewers {

namespace {

constexpr std::string_view kDestination = "nameddest=";

}  // namespace

ReaderRequest parse_reader_request(Words arguments) {
  using Kind = ReaderRequest::Kind;
  ReaderRequest request;
  for (; !arguments.empty() && arguments[0].starts_with("--"); arguments.erase(arguments.begin())) {
    const std::string& option = arguments[0];
    if (option == "--help") return {Kind::kHelp, "", "", false, false};
    if (option == "--version") return {Kind::kVersion, "", "", false, false};
    if (option != "--text" && option != "--dry-run") return {};
    request.as_text = request.as_text || option == "--text";
    request.dry_run = request.dry_run || option == "--dry-run";
  }
  const bool at_destination = arguments.size() == 4 && arguments[0] == "-openInNewWindow" && arguments[1] == "/a" &&
                              arguments[2].starts_with(kDestination);
  if (arguments.empty()) {
    request.kind = request.as_text ? Kind::kWrong : Kind::kStart;
  } else if (arguments.size() == 1 || at_destination) {
    request.kind = Kind::kOpen;
    request.file = arguments.back();
    if (at_destination) request.destination = arguments[2].substr(kDestination.size());
  }
  return request;
}

}  // namespace olh_viewers
