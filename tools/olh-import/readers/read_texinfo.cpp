// Texinfo: pages that makeinfo wrote. Identifiers are names of nodes and of entries of the indexes, with every character
// but letters and digits as its number; many are there twice, or for the generator alone.
#include <algorithm>
#include <set>

#include "generated_pages.h"
#include "reader.h"
#include "utf8.h"

namespace olh_import {

namespace {

constexpr std::string_view kEntry = "index-";
constexpr std::string_view kMadeUp[] = {kEntry, "toc-", "XREF", "SEC_"};
constexpr std::string_view kDigits = "0123456789";

// "plotting-2", the second place of "plotting", without its number; "" for a place that has none.
std::string_view without_number(std::string_view identifier) {
  const std::size_t last = identifier.find_last_not_of(kDigits);
  const bool is_numbered = last != std::string_view::npos && last + 1 < identifier.size() && identifier[last] == '-';
  return is_numbered ? identifier.substr(0, last) : "";
}

// "Oct_002dFiles-in-Octave" is "Oct-Files in Octave"; "g_t" stands before what does not begin with a letter.
std::string name_in(std::string_view identifier) {
  constexpr std::string_view kNoLetter = "g_t";
  constexpr std::size_t kNumberLength = 4;
  if (identifier.starts_with(kNoLetter)) identifier.remove_prefix(kNoLetter.size());
  std::string name;
  for (std::size_t at = 0; at < identifier.size(); ++at) {
    const std::string number(identifier.substr(at + 1, identifier[at] == '_' ? kNumberLength : 0));
    const bool is_number =
        number.size() == kNumberLength && number.find_first_not_of("0123456789abcdef") == number.npos;
    if (is_number) {
      name += utf8_of(static_cast<unsigned>(std::stoul(number, nullptr, 16)));
      at += kNumberLength;
    } else {
      name += identifier[at] == '-' ? ' ' : identifier[at];
    }
  }
  return name;
}

std::string text_without_link(Element element) { return text_without(element, {"copiable-anchor", "copiable-link"}); }

class TexinfoReader : public Reader {
 public:
  const char* kind() const override { return "Texinfo"; }

  bool recognises(const Source& source) const override { return !made_page(source.tree).empty(); }

  void read(const Source&, const SourceTree& pages, Manual& manual) override {
    manual.start = start_named_in(pages, made_page(pages));
  }

  bool is_place(std::string_view identifier) const override {
    const auto begins = [identifier](std::string_view made_up) { return identifier.starts_with(made_up); };
    return without_number(identifier).empty() && std::ranges::none_of(kMadeUp, begins);
  }

  void read_page(const HtmlPage& page, Manual& manual) override {
    if (page.name == manual.start) take_title(page, manual);
    std::string node;
    for (Element at = page.main; at; at = at.next_within(page.main)) {
      const std::string id = at.attribute(at.is("a") && at.attribute("id").empty() ? "name" : "id");
      if (at.has_class("contents")) take_contents(at, page.name, manual);
      if (id.starts_with(kEntry)) take_entry(at, id, page.name, manual);
      if (is_node(at, id)) node = id;
      if (node.empty() || !at.is_heading()) continue;
      manual.add_topic({name_in(node), page.name, node, text_without_link(at), Rank::kLabel});
      node.clear();
    }
  }

  void finish(Manual& manual) override {
    std::erase_if(manual.topics, [this](const Topic& topic) {
      return topic.rank == Rank::kKeyword && entries_.contains(without_number(topic.place));
    });
  }

 private:
  static std::string made_page(const SourceTree& pages) { return page_made_by(pages, {"makeinfo", "texi2any"}); }

  // Pages are called "Node (Manual)", the first one "Top (Manual)".
  static void take_title(const HtmlPage& page, Manual& manual) {
    const std::string title = page.markup.first("title").text();
    constexpr std::string_view kTop = "Top (";
    if (title.starts_with(kTop) && title.ends_with(')'))
      manual.title = title.substr(kTop.size(), title.size() - kTop.size() - 1);
  }

  // Those of the first page are kept: others may belong to all of the manual in one page.
  static void take_contents(Element list, const std::string& page, Manual& manual) {
    if (page == manual.start) manual.contents.clear();
    if (manual.contents.empty()) add_items(list, page, manual.contents);
  }

  // Nodes are parts of a page, or lie before the links to their neighbours.
  bool is_node(Element element, const std::string& id) const {
    if (id.empty() || !is_place(id)) return false;
    return (element.is("div") && !element.has_class("float")) || element.next_sibling().has_class("header");
  }

  // Where all of a manual lies beside its parts, the parts come first.
  void take_entry(Element element, const std::string& id, const std::string& page, Manual& manual) {
    if (!entries_.insert(id).second) return;
    const std::string name = name_in(std::string_view(id).substr(kEntry.size()));
    std::string title = element.is("dt") ? text_without_link(element) : name;
    if (title.starts_with(": ")) title.erase(0, 2);
    manual.add_topic({name, page, id, title, Rank::kKeyword});
  }

  std::set<std::string, std::less<>> entries_;  // their identifiers
};

}  // namespace

std::unique_ptr<Reader> texinfo_reader() { return std::make_unique<TexinfoReader>(); }

}  // namespace olh_import
