// Plain pages: whatever has headings and identifiers. Contents in the order in which the start page leads to them.
#include <algorithm>

#include "generated_pages.h"
#include "reader.h"

namespace olh_import {

namespace {

class PlainReader : public Reader {
 public:
  const char* kind() const override { return "plain pages"; }

  bool recognises(const Source& source) const override {
    return std::ranges::any_of(source.tree.names(), is_page_name);
  }

  void read_page(const HtmlPage& page, Manual& manual) override { order_.take(page, manual); }

  void finish(Manual& manual) override {
    for (const std::string& page : order_.pages(manual)) manual.add_chapter({0, "", page, ""});
  }

 private:
  ReadingOrder order_;
};

}  // namespace

std::unique_ptr<Reader> plain_reader() { return std::make_unique<PlainReader>(); }

}  // namespace olh_import
