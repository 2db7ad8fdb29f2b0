// The places of a page: what the fragment of an address can name.
//
// Knows    how HTML writes them: the values of id, and of name as older pages have it.
// Not      which of them a topic table names, or an address.
// For      text_view; olh, which checks topic tables.
#ifndef OLH_TOOLS_VIEWERS_PAGE_PLACES_H
#define OLH_TOOLS_VIEWERS_PAGE_PLACES_H

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace olh_viewers {

std::set<std::string> places_in_page(std::string_view page);

// How many lines come before that of the first text at a place; nothing without the place.
std::optional<std::size_t> lines_before_place(std::string_view page, std::string_view place);

}  // namespace olh_viewers

#endif
