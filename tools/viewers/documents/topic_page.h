// The page of a topic, for a viewer that runs no scripts.
//
// Knows    what a manual's start page does with "#context=&topic=NAME", and the topic table that it reads; which page
//          lists a portal's documents without scripts.
// For      text_view.
#ifndef OLH_TOOLS_VIEWERS_TOPIC_PAGE_H
#define OLH_TOOLS_VIEWERS_TOPIC_PAGE_H

#include <functional>
#include <string>
#include <string_view>

namespace olh_viewers {

// Gives the text behind an address; "" when there is none.
using Fetch = std::function<std::string(const std::string& url)>;

struct TextPage {
  std::string url;
  std::string missing;  // the topic that was asked for and is not in the table, else ""
};

TextPage page_without_scripts(const std::string& url, const Fetch& fetch);

// The target page of a topic in the text of a topic table; "" without one.
std::string target_in_table(std::string_view table, std::string_view topic);

}  // namespace olh_viewers

#endif
