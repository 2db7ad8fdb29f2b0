// The texts that a URL is made of, before they go into a buffer.
//
// Knows    which bytes survive in a topic, and which are percent-encoded.
// Not      the shapes of URLs (url_build.cpp, show.cpp).
// For      url_build, show, and topic, which compares normalised topics.
#ifndef OLH_DOCLIST_URL_BUILD_H
#define OLH_DOCLIST_URL_BUILD_H

#include <cstddef>
#include <string>
#include <string_view>

namespace olh {

// Room for a URL and its NUL, and for a PDF destination.
inline constexpr std::size_t kUrlSize = 2048;

// `text` with its space, apostrophe, parentheses and commas percent-encoded.
std::string encoded(std::string_view text);

// The letters, digits, "-" and "_" of a topic, into `topic`.
void normalise_topic(std::string_view text, std::string& topic);

}  // namespace olh

#endif
