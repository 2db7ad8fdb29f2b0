// mdBook: the list of chapters lies beside each page, or in a page of its own.
#include <algorithm>
#include <set>

#include "generated_pages.h"
#include "reader.h"

namespace olh_import {

namespace {

constexpr const char* kFirstPage = "index.html";
constexpr const char* kListPage = "toc.html";
constexpr std::string_view kMark = "Book generated using mdBook";

class MdbookReader : public Reader {
 public:
  const char* kind() const override { return "mdBook"; }

  bool recognises(const Source& source) const override {
    return source.tree.has(kFirstPage) && source.tree.read(kFirstPage).value_or("").find(kMark) != std::string::npos;
  }

  void read(const Source&, const SourceTree& pages, Manual& manual) override {
    const Markup first = Markup::page(pages.read(kFirstPage).value_or(""));
    manual.title = first_of_class(first.root(), "menu-title").text();
    const char* listing = pages.has(kListPage) ? kListPage : kFirstPage;
    const Markup list = Markup::page(pages.read(listing).value_or(""));
    add_items(first_of_class(list.root(), "chapter", "ol"), listing, manual.contents);
    for (const Chapter& chapter : manual.contents)
      if (!chapter.page.empty()) chapters_.insert(chapter.page);
    const auto first_chapter = std::ranges::find_if_not(manual.contents, &std::string::empty, &Chapter::page);
    if (first_chapter != manual.contents.end()) manual.start = first_chapter->page;
  }

  // All chapters are listed. The first page is often a copy of the first of them; others hold the whole book to be printed,
  // or stand for missing pages.
  bool is_content(std::string_view page) const override { return chapters_.empty() || chapters_.contains(page); }

 private:
  std::set<std::string, std::less<>> chapters_;  // their pages
};

}  // namespace

std::unique_ptr<Reader> mdbook_reader() { return std::make_unique<MdbookReader>(); }

}  // namespace olh_import
