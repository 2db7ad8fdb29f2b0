// A file below a documentation root, wherever that root lies.
//
// Knows    that a root is a directory or a URL, and how a path below it becomes an address.
// For      the verbs that read what a root says of itself: its lists and its topic tables.
#ifndef OLH_TOOLS_ROOT_TEXT_H
#define OLH_TOOLS_ROOT_TEXT_H

#include <optional>
#include <string>

namespace olh {

bool is_web_root(const std::string& root);

// The place of a file below a root: a path, or an address in which every byte that needs it is encoded.
std::string place_in_root(const std::string& root, const std::string& relative);

// The place of a file beside a page that a lookup answered with, file:///... or http://...
std::string place_beside(const std::string& page, const std::string& relative);

// The text at such a place; nothing when there is no regular file of at most 16 MiB that can be read.
std::optional<std::string> text_at(const std::string& place);
std::optional<std::string> text_in_root(const std::string& root, const std::string& relative);

}  // namespace olh

#endif
