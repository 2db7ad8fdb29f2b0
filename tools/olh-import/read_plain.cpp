// Plain pages: whatever has headings and identifiers. Contents in the order in which the start page leads to them.
#include <algorithm>
#include <set>

#include "reader.h"

namespace olh_import {

namespace {

class PlainReader : public Reader {
 public:
  const char* kind() const override { return "plain pages"; }

  bool recognises(const Source& source) const override {
    return std::ranges::any_of(source.tree.names(), is_page_name);
  }

  void read_page(const HtmlPage& page, Manual& manual) override {
    pages_.push_back(page.name);
    if (page.name != manual.start) return;
    for (Element at = page.main; at; at = at.next_within(page.main))
      if (at.is("a")) named_.push_back(target_of_link(page.name, at.attribute("href")).page);
  }

  // Each page once: the start page, those that it names, the others.
  void finish(Manual& manual) override {
    std::set<std::string> done;
    const auto add = [&](const std::string& page) {
      if (std::ranges::binary_search(pages_, page) && done.insert(page).second)
        manual.contents.push_back({0, "", page, ""});
    };
    add(manual.start);
    std::ranges::for_each(named_, add);
    std::ranges::for_each(pages_, add);
  }

 private:
  std::vector<std::string> pages_;  // in the order of their names
  std::vector<std::string> named_;
};

}  // namespace

std::unique_ptr<Reader> plain_reader() { return std::make_unique<PlainReader>(); }

}  // namespace olh_import
