// The titles of pages and of the places in them.
//
// Knows    what a title is worth: the reader's own word for a place, the heading there, the title of the page, its name;
//          and that what generators add to the title of every page ("Menus - The manual") says nothing of a page.
// For      import_manual.
#ifndef OLH_IMPORT_PAGE_TITLES_H
#define OLH_IMPORT_PAGE_TITLES_H

#include <map>
#include <string>
#include <unordered_map>

#include "reader.h"

namespace olh_import {

class PageTitles {
 public:
  void add(const HtmlPage& page);
  // When all pages are there: takes away what nearly all titles that come from heads begin or end with, and the title of
  // the manual.
  void cut_repeated(const std::string& manual);

  std::string of_page(const std::string& page) const;
  // As it stands in the page.
  std::string whole_of_page(const std::string& page) const;
  std::string at(const Topic& topic) const;
  // Every page that has one, in the order of names.
  const std::map<std::string, std::string>& pages() const { return pages_; }

 private:
  std::map<std::string, std::string> pages_;
  std::unordered_map<std::string, std::string>
      of_heads_;  // the pages whose title is that of the head, as it stands there
  std::unordered_map<std::string, std::string> places_;
};

}  // namespace olh_import

#endif
