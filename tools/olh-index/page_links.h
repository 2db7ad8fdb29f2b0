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
  std::string page;  // from the manual's folder
  std::string place;
  std::string text;
};

// Calls for each link of a page to another page of its manual; `page` is the way to it from the manual's folder. Links to
// the next page, the index and the like, which have a "rel" or a key, are left out.
void each_link(std::string_view page, std::string_view markup, const std::function<void(const Link&)>& call);

}  // namespace olh_index

#endif
