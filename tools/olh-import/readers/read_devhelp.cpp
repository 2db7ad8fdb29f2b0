// DevHelp: a book *.devhelp2, as GTK-Doc and gi-docgen write it, names its chapters and every identifier with its place.
#include <algorithm>

#include "reader.h"

namespace olh_import {

namespace {

constexpr std::string_view kBookEnding = ".devhelp2";

// What stands around an identifier in the name of a keyword: "struct GArray", "g_free ()".
constexpr std::string_view kBeforeIdentifier[] = {"struct ", "enum ", "union "};
constexpr std::string_view kBehindIdentifier[] = {"()", " ", "\u00a0"};

constexpr std::string_view kPartsOfEntry[] = {".parameters", ".returns", ".members", ".top_of_page"};

// Signals and properties have a sentence for a name, which many of them share ("The \u201cclicked\u201d signal"): they
// are called by their place ("GtkButton-clicked").
std::string name_of_keyword(std::string_view written, const std::string& place) {
  if (written.starts_with("The ") && !place.empty()) return place;
  for (const std::string_view word : kBeforeIdentifier)
    if (written.starts_with(word)) written.remove_prefix(word.size());
  for (const std::string_view sign : kBehindIdentifier)
    if (written.ends_with(sign)) written.remove_suffix(sign.size());
  return std::string(written);
}

class DevhelpReader : public Reader {
 public:
  const char* kind() const override { return "DevHelp"; }

  bool recognises(const Source& source) const override { return !source.find(kBookEnding).empty(); }

  // A book in the folder lies beside its pages; one beside the folder belongs to all of it.
  std::string folder(const Source& source) override {
    const std::string book = source.find(kBookEnding);
    const bool is_in_tree = source.tree.has(book) && book.find('/') != std::string::npos;
    return is_in_tree ? book.substr(0, book.rfind('/')) : "";
  }

  void read(const Source& source, const SourceTree&, Manual& manual) override {
    const std::string file = source.find(kBookEnding);
    const Markup markup = manual.read_xml(file, source.read_file(file));
    const Element book = markup.root();
    if (!book.is("book")) {
      manual.notes.push_back(file + " is no book of DevHelp, and is not read");
      return;
    }
    if (const std::size_t others = source.tree.ending_in(kBookEnding).size(); others > 1)
      manual.notes.push_back(file + " is read, and none of the other books: " + std::to_string(others - 1));
    manual.title = book.attribute("title");
    const LinkTarget start = target_of_link("", book.attribute("link"));
    if (!start.page.empty()) manual.add_chapter({0, manual.title, start.page, start.place});
    add_below(markup.first("chapters"), 0, manual.contents);
    for (Element at = markup.first("functions"); at; at = at.next_within(book))
      if (at.is("keyword")) take(at, manual);
  }

  // The indexes of all identifiers, which say nothing that the book does not say.
  bool is_content(std::string_view page) const override { return !page.starts_with("api-index"); }

  // DocBook numbers what has no identifier of its own; parts of a function's entry are found with the function.
  bool is_place(std::string_view identifier) const override {
    const auto ends = [identifier](std::string_view part) { return identifier.ends_with(part); };
    return !identifier.starts_with("id-") && std::ranges::none_of(kPartsOfEntry, ends);
  }

 private:
  static void add_below(Element above, int depth, std::vector<Chapter>& contents) {
    if (depth > kDeepestChapter) return;
    for (Element sub = above.first_child(); sub; sub = sub.next_sibling()) {
      if (!sub.is("sub")) continue;
      const LinkTarget target = target_of_link("", sub.attribute("link"));
      contents.push_back({depth, sub.attribute("name"), target.page, target.place});
      add_below(sub, depth + 1, contents);
    }
  }

  static void take(Element keyword, Manual& manual) {
    const LinkTarget target = target_of_link("", keyword.attribute("link"));
    const std::string title = keyword.attribute("name");
    manual.add_topic({name_of_keyword(title, target.place), target.page, target.place, title, Rank::kObject});
  }
};

}  // namespace

std::unique_ptr<Reader> devhelp_reader() { return std::make_unique<DevhelpReader>(); }

}  // namespace olh_import
