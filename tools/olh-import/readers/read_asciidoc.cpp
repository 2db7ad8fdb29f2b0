// AsciiDoc: pages that Asciidoctor or AsciiDoc wrote. Identifiers that an author has not chosen begin with "_", and are
// made of the words of a heading.
#include <algorithm>
#include <map>

#include "arranged_topics.h"
#include "generated_pages.h"
#include "reader.h"

namespace olh_import {

namespace {

constexpr std::string_view kPartsOfPage[] = {"header", "toc", "toctitle", "content", "preamble", "footnotes"};
constexpr int kDeepestSection = 3;  // that the generators list unless told otherwise

bool is_made_of_heading(std::string_view name) { return name.starts_with('_'); }

class AsciidocReader : public Reader {
 public:
  const char* kind() const override { return "AsciiDoc"; }

  bool recognises(const Source& source) const override { return !page_made_by(source.tree, {"asciidoc"}).empty(); }

  bool is_place(std::string_view identifier) const override {
    return std::ranges::count(kPartsOfPage, identifier) == 0;
  }

  void read_page(const HtmlPage& page, Manual& manual) override {
    order_.take(page, manual);
    const Element text = with_id(page.markup.root(), "content");
    for (Element at = text; at; at = at.next_within(text)) take_label(at, page.name, manual);
    take_sections(page);
  }

  void finish(Manual& manual) override {
    for (const std::string& page : order_.pages(manual)) {
      manual.add_chapter({0, "", page, ""});
      std::ranges::copy(sections_[page], std::back_inserter(manual.contents));
    }
    tell_headings_apart(manual);
  }

 private:
  static Element with_id(Element top, std::string_view id) {
    Element at = top;
    while (at && at.attribute("id") != id) at = at.next_within(top);
    return at;
  }

  // What is no heading has an identifier because an author has given it one.
  void take_label(Element element, const std::string& page, Manual& manual) const {
    const std::string id = element.attribute("id");
    const bool is_label = !id.empty() && is_place(id) && !is_made_of_heading(id) && !element.is_heading() &&
                          element.attribute("href").empty();
    if (is_label) manual.add_topic({id, page, id, title_of_label(element), Rank::kLabel});
  }

  // A page has a list of its sections if its author wants one; AsciiDoc leaves it to a script to fill.
  void take_sections(const HtmlPage& page) {
    const Element list = with_id(page.markup.root(), "toc");
    if (!list) return;
    std::vector<Chapter>& sections = sections_[page.name];
    add_items(list, page.name, sections);
    for (Chapter& section : sections) ++section.depth;
    if (!sections.empty()) return;
    for (const Passage& passage : page.passages)
      if (passage.level > 1 && passage.level <= kDeepestSection && !passage.place.empty())
        sections.push_back({passage.level - 1, passage.heading, page.name, passage.place});
  }

  // Each of many pages may have a "_description": then it is "git-add_description".
  static void tell_headings_apart(Manual& manual) {
    std::map<std::string, int> pages_with;
    const auto is_shared = [&](const Topic& topic) {
      return topic.rank == Rank::kHeading && is_made_of_heading(topic.name) && pages_with[topic.name] > 1;
    };
    for (const Topic& topic : manual.topics) pages_with[topic.name] += topic.rank == Rank::kHeading ? 1 : 0;
    for (Topic& topic : manual.topics)
      if (is_shared(topic)) topic.name.insert(0, name_of_page(topic.page));
  }

  ReadingOrder order_;
  std::map<std::string, std::vector<Chapter>> sections_;  // of pages
};

}  // namespace

std::unique_ptr<Reader> asciidoc_reader() { return std::make_unique<AsciidocReader>(); }

}  // namespace olh_import
