// Addresses: what may be handed to a browser at all, and the way between a file and its address.
//
// Knows    schemes and percent-encoding.
// For      both adapters; olh.
#ifndef OLH_TOOLS_VIEWERS_URL_H
#define OLH_TOOLS_VIEWERS_URL_H

#include <optional>
#include <string>
#include <string_view>

namespace olh_viewers {

// What is wrong with an address as a sentence's end ("begins with \"-\""); "" when a browser may have it: http, https or
// file, without control characters.
std::string objection_to(std::string_view url);

// The same for a file or a destination, which may have any bytes but control characters.
std::string objection_to_text(std::string_view text);

// The address in the remote command that asks a browser to open it; nothing for another command.
std::optional<std::string> url_to_open(std::string_view command);

bool is_file_url(std::string_view url);

// Text with every %XX as the byte it stands for.
std::string decoded(std::string_view text);

// The parts of an address.
std::string_view without_query_and_fragment(std::string_view url);
std::string_view fragment_of(std::string_view url);

// The file of a file:// address, decoded; "" for any other address.
std::string file_of(std::string_view url);
// The file:// address of a file; a relative one lies in the working directory.
std::string url_of(const std::string& file);

// A file:// address that has a fragment, with a query (be it empty) before it.
std::string with_query(const std::string& url);

// Every byte but letters, digits, "-", "_", "." and "~" as %XX.
std::string percent_encoded(std::string_view text);

}  // namespace olh_viewers

#endif
