// The text of a manual for the search in the page: QELdata/QELSearchText.js.
//
// Knows    the form in which share/docs/htmldocs/QEL/lib/search.js reads it: a call for each passage of a page, with the
//          name of the topic that the page is.
// Owns     the text until it is written, in a file: that of all pages is too much for the memory.
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
  explicit SearchText(const OutputFolder& manual) : manual_(manual), texts_(manual.nameless_file()) {}
  void add(const HtmlPage& page);
  // `topic_of_page` gives the name of a page's own topic in the table, "" without one.
  void write(const std::function<std::string(const std::string&)>& topic_of_page);

 private:
  struct PageText {
    std::string page;
    std::size_t size;  // in the file
  };
  std::string next_text(const PageText& text, const std::string& topic);

  const OutputFolder& manual_;
  NamelessFile texts_;  // a line for each passage, the rest of a call behind the topic's name
  std::vector<PageText> pages_;
};

// The text of a manual that has a topic table, from its pages; what was there before gives way. Throws a Refusal.
void write_search_text(const std::string& manual_folder);

}  // namespace olh_import

#endif
