// The text of a manual for the search in the page: QELdata/QELSearchText.js.
//
// Knows    the form in which share/docs/htmldocs/QEL/lib/search.js reads it: a call for each passage of a page, with the
//          name of the topic that the page is.
// Owns     the text until it is written.
// For      import_manual, main.
#ifndef OLH_IMPORT_SEARCH_TEXT_H
#define OLH_IMPORT_SEARCH_TEXT_H

#include <functional>
#include <string>
#include <vector>

#include "html_page.h"
#include "output_folder.h"

namespace olh_import {

class SearchText {
 public:
  void add(const HtmlPage& page);
  // `topic_of_page` gives the name of a page's own topic in the table, "" without one.
  void write(const OutputFolder& manual, const std::function<std::string(const std::string&)>& topic_of_page) const;

 private:
  struct PageText {
    std::string page;
    std::vector<std::string> passages;  // each the rest of a call, behind the topic's name
  };
  std::vector<PageText> pages_;
};

// The text of a manual that has a topic table, from its pages; what was there before gives way. Throws a Refusal.
void write_search_text(const std::string& manual_folder);

}  // namespace olh_import

#endif
