// The text behind an http:// address.
//
// Knows    as much of HTTP as one request of a small file takes: one connection, one answer, no redirection.
// Not      whether an address is a document (the library's probe decides that, in its own way).
// For      root_text.
#ifndef OLH_TOOLS_WEB_TEXT_H
#define OLH_TOOLS_WEB_TEXT_H

#include <optional>
#include <string>
#include <string_view>

namespace olh {

// The body of the answer; nothing unless the server sends all of it with the status 200, at most 16 MiB within ten
// seconds.
std::optional<std::string> web_text(const std::string& url);

// The body in a whole answer; nothing for another status, or when less came than its head announces.
std::optional<std::string> body_of(std::string_view answer);

}  // namespace olh

#endif
