// One page of a manual, as all readers see it.
//
// Knows    where the text of a page is and where only the frame of its generator, which headings it has and how a place
//          is named, whatever generator made it.
// Not      what a generator's classes mean (its reader).
// For      import_manual, the readers.
#ifndef OLH_IMPORT_HTML_PAGE_H
#define OLH_IMPORT_HTML_PAGE_H

#include <deque>
#include <set>
#include <string>

#include "markup.h"

namespace olh_import {

// The text of a page from one heading to the next, and from one term of a list of definitions to the next if the term has
// a place: what a manual says of a function is a passage of its own. Behind such a list the passage around it goes on, as
// another one with its place and heading. The first may have no heading.
struct Passage {
  int level = 0;        // of the heading, 1 to 6; 0 without one, for a term, and for what goes on
  std::string place;    // the identifier that leads to it, "" without one
  std::string heading;  // its text, without the sign of a link to itself
  std::string text;
};

struct HtmlPage {
  std::string name;   // "library/json.html"
  std::string title;  // the first heading of level 1, else the title in the head, else ""
  std::deque<Passage> passages;
  std::set<std::string, std::less<>> places;  // every identifier of the page
  Markup markup;

  bool is_title_of_head = false;
  // Whether it does nothing but lead to another page.
  bool is_redirect = false;

  // The element that holds the text, and none of the frame.
  Element main;
};

HtmlPage read_html_page(const std::string& name, std::string_view bytes);

// Whether a file is a page, by its name.
bool is_page_name(std::string_view name);

// Where a link in a page leads: the page's name (of a folder, that of its index.html) and the place in it. Both "" when it
// leads out of the folder of pages.
struct LinkTarget {
  std::string page;
  std::string place;
};
LinkTarget target_of_link(std::string_view from_page, std::string_view href);
// The same for an entry of a table, where an empty one leads nowhere.
LinkTarget target_of_entry(std::string_view table, std::string_view href);

}  // namespace olh_import

#endif
