// What pages of generators have in common: who made them, where their manual begins, and lists of links as contents.
//
// For      the readers of kinds that are told by their pages alone.
#ifndef OLH_IMPORT_GENERATED_PAGES_H
#define OLH_IMPORT_GENERATED_PAGES_H

#include <initializer_list>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "reader.h"

namespace olh_import {

// The first of a few pages of which <meta name="generator"> names one of these programs, given in lower case; "" without
// one.
std::string page_made_by(const SourceTree& pages, std::initializer_list<std::string_view> programs);

// The page that a page calls the beginning of its manual, by <link rel="home"> or "start"; "" when it names none.
std::string start_named_in(const SourceTree& pages, const std::string& page);

// The first element below (or at) `top` with this class; with `name`, the first of that name that has it.
Element first_of_class(Element top, std::string_view wanted, std::string_view name = "");

// A chapter for each item of the lists in lists below `top`, with the item's first link. Items whose link leads out of the
// pages are left out; captions before lists are headings over them.
void add_items(Element top, const std::string& page, std::vector<Chapter>& contents);

// The title of what an author has given a name of its own: the term, or the title of the figure, table or example; ""
// without one.
std::string title_of_label(Element label);

// A topic for a link that leads nowhere, but has a name that the reader takes for a place: an author gave it.
void add_label(Element anchor, const std::string& page, const Reader& reader, Manual& manual);

// The pages in the order in which the start page leads to them; behind those that it names, the others by name.
class ReadingOrder {
 public:
  void take(const HtmlPage& page, const Manual& manual);
  std::vector<std::string> pages(const Manual& manual) const;

 private:
  std::vector<std::string> pages_;  // in the order of their names
  std::vector<std::string> named_;
};

}  // namespace olh_import

#endif
