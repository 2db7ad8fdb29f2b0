// The links between the pages of a manual: a page that many others lead to is one that people look for, and what the
// links say are words for it.
//
// Knows    how a link looks in a page, and where it leads. It is no reader of HTML: what it takes for a link and is none
//          does no harm.
// For      manual_text.
#ifndef OLH_TOOLS_INDEX_PAGE_LINKS_H
#define OLH_TOOLS_INDEX_PAGE_LINKS_H

#include <functional>
#include <string>
#include <string_view>

namespace olh_index {

struct Link {
  std::string_view target;  // as it is written: a way from the page, and perhaps "#" and a place
  std::string_view markup;  // of its text
};

// Calls for each link of a page to another one. Links to the next page, the index and the like, which have a "rel" or a key,
// are left out.
void each_link(std::string_view page, const std::function<void(const Link&)>& call);

// Where a target leads; `from` is the way to the page from the manual's folder, and `page` that to the other one, "" when it
// is none of the manual.
struct LinkedPlace {
  std::string page;
  std::string place;
};
LinkedPlace linked_place(std::string_view from, std::string_view target);

// The text in the markup of a link.
std::string text_of_link(std::string_view markup);

}  // namespace olh_index

#endif
