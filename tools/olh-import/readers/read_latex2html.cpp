// LaTeX2HTML: pages called by numbers. Labels of the text and entries of its index are what can be asked for.
#include <algorithm>

#include "generated_pages.h"
#include "reader.h"

namespace olh_import {

namespace {

constexpr std::string_view kCounted[] = {"tex2html", "SECTION", "CHILD_LINKS"};

// Where an entry of the index leads.
bool is_counted_place(std::string_view identifier) {
  return identifier.find_first_not_of("0123456789") == std::string_view::npos;
}

class Latex2htmlReader : public Reader {
 public:
  const char* kind() const override { return "LaTeX2HTML"; }

  bool recognises(const Source& source) const override { return !page_made_by(source.tree, {"latex2html"}).empty(); }

  bool is_place(std::string_view identifier) const override {
    const auto begins = [identifier](std::string_view counted) { return identifier.starts_with(counted); };
    return !is_counted_place(identifier) && std::ranges::none_of(kCounted, begins);
  }

  void read_page(const HtmlPage& page, Manual& manual) override {
    if (page.name == manual.start) take_contents(page, manual);
    for (Element at = page.main; at; at = at.next_within(page.main)) {
      if (!at.is("a")) continue;
      add_label(at, page.name, *this, manual);
      if (at.parent().is("dt") && at.parent().first_child() == at) take_entry(at, page.name, manual);
    }
  }

 private:
  // A text without a title of its own is called after its file on the first page.
  static void take_contents(const HtmlPage& page, Manual& manual) {
    add_items(first_of_class(page.main, "ChildLinks"), page.name, manual.contents);
    if (!manual.contents.empty() && std::ranges::find(page.passages, 1, &Passage::level) == page.passages.end())
      manual.title = manual.contents.front().title;
  }

  // The first link of an entry has its words, the others are further places.
  static void take_entry(Element link, const std::string& page, Manual& manual) {
    const LinkTarget target = target_of_entry(page, link.attribute("href"));
    if (target.place.empty() || !is_counted_place(target.place)) return;
    const std::string word = link.text();
    manual.add_topic({word, target.page, target.place, word, Rank::kKeyword});
  }
};

}  // namespace

std::unique_ptr<Reader> latex2html_reader() { return std::make_unique<Latex2htmlReader>(); }

}  // namespace olh_import
