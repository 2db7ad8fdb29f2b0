// The texts that a URL is made of, before they go into a buffer.
//
// Knows    which bytes survive in a topic, and which are percent-encoded.
// Not      the shapes of URLs (url_build.cpp, show.cpp).
// For      url_build, show, the lookups, and topic, which compares normalised topics.
#ifndef OLH_DOCLIST_URL_BUILD_H
#define OLH_DOCLIST_URL_BUILD_H

#include <cstddef>
#include <string>
#include <string_view>

namespace olh {

// In front of what lies on this machine.
inline constexpr std::string_view kFileScheme = "file://";

// Room for a URL and its NUL, and for a PDF destination.
inline constexpr std::size_t kUrlSize = 2048;

constexpr bool is_letter_or_digit(char byte) noexcept {
  return (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
}

// Whether a byte survives in a topic.
constexpr bool belongs_to_topic(char byte) noexcept { return is_letter_or_digit(byte) || byte == '-' || byte == '_'; }

// `text` with its space, apostrophe, parentheses and commas percent-encoded.
std::string encoded(std::string_view text);

// The bytes of a topic that survive.
std::string normalised_topic(std::string_view topic);

}  // namespace olh

#endif
