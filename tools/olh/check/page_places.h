// The places of a page: what the fragment of an address can name.
//
// Knows    how HTML writes them: the values of id, and of name as older pages have it.
// Not      which of them a topic table names (check_manuals).
// For      check_topic_pages.
#ifndef OLH_TOOLS_PAGE_PLACES_H
#define OLH_TOOLS_PAGE_PLACES_H

#include <set>
#include <string>
#include <string_view>

namespace olh {

std::set<std::string> places_in_page(std::string_view page);

}  // namespace olh

#endif
