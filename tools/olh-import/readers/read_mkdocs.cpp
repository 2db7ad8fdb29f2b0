// MkDocs: told by the index of its search. Every theme writes the navigation in its own way, as lists of links. Where an
// API is described, its objects are in an inventory as Sphinx has it.
#include <algorithm>
#include <set>

#include "generated_pages.h"
#include "reader.h"

namespace olh_import {

namespace {

constexpr const char* kSearchIndex = "search/search_index.json";
constexpr const char* kHomePage = "index.html";
constexpr const char* kMissingPage = "404.html";

bool is_list_of_links(Element element) { return element.is("ul") || element.is("ol"); }

std::size_t pages_linked_in(Element list, const std::string& page) {
  std::set<std::string> pages;
  for (Element at = list; at; at = at.next_within(list))
    if (at.is("a")) pages.insert(target_of_entry(page, at.attribute("href")).page);
  return pages.size();
}

// The list, not within another, that leads to the most pages; where captions divide it, all that they divide.
Element navigation_of(const Markup& markup, const std::string& page) {
  Element found;
  std::size_t most = 0;
  const Element root = markup.root();
  for (Element at = root; at;) {
    const std::size_t linked = is_list_of_links(at) ? pages_linked_in(at, page) : 0;
    if (linked > most) {
      most = linked;
      found = at;
    }
    at = at.next_within(root, !is_list_of_links(at));
  }
  for (Element beside = found.parent().first_child(); beside; beside = beside.next_sibling())
    if (beside.has_class("caption")) return found.parent();
  return found;
}

class MkdocsReader : public Reader {
 public:
  const char* kind() const override { return "MkDocs"; }

  bool recognises(const Source& source) const override {
    return source.tree.has(kSearchIndex) && source.tree.has(kHomePage);
  }

  // The page that stands for missing ones is called after the site alone.
  void read(const Source& source, const SourceTree& pages, Manual& manual) override {
    const std::unique_ptr<Reader> inventory = sphinx_reader();
    if (inventory->recognises(source)) inventory->read(source, pages, manual);
    const Markup home = Markup::page(pages.read(kHomePage).value_or(""));
    const Markup missing = Markup::page(pages.read(kMissingPage).value_or(""));
    manual.title = missing.first("title").text();
    if (manual.title.empty()) manual.title = home.first("title").text();
    manual.start = kHomePage;
    add_items(navigation_of(home, kHomePage), kHomePage, manual.contents);
    // The sections of the page itself may lie among the pages.
    std::erase_if(manual.contents, [](const Chapter& one) { return !one.place.empty(); });
  }

  bool is_content(std::string_view page) const override { return page != kMissingPage; }
};

}  // namespace

std::unique_ptr<Reader> mkdocs_reader() { return std::make_unique<MkdocsReader>(); }

}  // namespace olh_import
