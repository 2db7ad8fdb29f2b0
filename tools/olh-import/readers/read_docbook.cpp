// DocBook: pages that the XSL stylesheets wrote. Authors name parts of the text, the stylesheets number the others.
#include <algorithm>

#include "generated_pages.h"
#include "nested_keywords.h"
#include "reader.h"

namespace olh_import {

namespace {

// "idm45", "idp128", "id-1.2", "id2530", and footnotes of those.
bool is_numbered_id(std::string_view identifier) {
  constexpr std::string_view kFootnote = "ftn.";
  if (identifier.starts_with(kFootnote)) identifier.remove_prefix(kFootnote.size());
  if (!identifier.starts_with("id")) return false;
  identifier.remove_prefix(2);
  if (identifier.starts_with('m') || identifier.starts_with('p') || identifier.starts_with('-'))
    identifier.remove_prefix(1);
  return !identifier.empty() && identifier.front() >= '0' && identifier.front() <= '9';
}

class DocbookReader : public Reader {
 public:
  const char* kind() const override { return "DocBook"; }

  bool recognises(const Source& source) const override { return !stylesheet_page(source.tree).empty(); }

  void read(const Source&, const SourceTree& pages, Manual& manual) override {
    manual.start = start_named_in(pages, stylesheet_page(pages));
  }

  bool is_place(std::string_view identifier) const override { return !is_numbered_id(identifier); }

  void read_page(const HtmlPage& page, Manual& manual) override {
    if (page.name == manual.start) add_items(first_of_class(page.main, "toc"), page.name, manual.contents);
    for (Element at = page.main; at; at = at.next_within(page.main)) {
      if (at.is("a")) add_label(at, page.name, *this, manual);
      if (at.is("div") && at.has_class("index")) take_index(at, page.name, manual);
    }
  }

 private:
  static std::string stylesheet_page(const SourceTree& pages) { return page_made_by(pages, {"docbook"}); }

  // An entry is "word, LINK, LINK", with those that lie in it in a list of their own.
  static void take_index(Element index, const std::string& page, Manual& manual) {
    NestedKeywords keywords;
    visit_nested(index, "dl", [&](Element entry, int depth) {
      if (!entry.is("dt")) return;
      Element link = entry;
      while (link && !link.is("a")) link = link.next_within(entry);
      std::string word = entry.text();
      if (link) word.resize(std::min(word.find(", " + link.text()), word.size()));
      const LinkTarget target = target_of_entry(page, link.attribute("href"));
      const std::string& name = keywords.next(std::max(depth - 1, 0), word);
      if (!target.page.empty()) manual.add_topic({name, target.page, target.place, name, Rank::kKeyword});
    });
  }
};

}  // namespace

std::unique_ptr<Reader> docbook_reader() { return std::make_unique<DocbookReader>(); }

}  // namespace olh_import
