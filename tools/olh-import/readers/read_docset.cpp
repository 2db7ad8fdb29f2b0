// Docsets, as Dash and Zeal show them: a folder X.docset with an index in a database and the pages beside it. The paths
// of the index have entries for these programs before them: "<dash_entry_name=...>page.html#place".
#include <algorithm>
#include <filesystem>

#include "database.h"
#include "generated_pages.h"
#include "reader.h"
#include "refusal.h"
#include "url.h"

namespace olh_import {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kIndex = "docset.dsidx";      // in any case of letters
constexpr std::string_view kMadePlace = "//apple_ref/";  // what a place begins with that was made for the index
constexpr std::string_view kEntryForPrograms = "<dash_entry_";

// Without NOT INDEXED, the order would be that of an index of the table.
constexpr const char* kDocsetIndex = "SELECT name, type, path, '' FROM searchIndex NOT INDEXED";
constexpr const char* kTokens =
    "SELECT ZTOKENNAME, ZTYPENAME, ZPATH, ZANCHOR FROM ZTOKEN NOT INDEXED"
    " JOIN ZTOKENMETAINFORMATION ON ZTOKEN.ZMETAINFORMATION = ZTOKENMETAINFORMATION.Z_PK"
    " JOIN ZFILEPATH ON ZTOKENMETAINFORMATION.ZFILE = ZFILEPATH.Z_PK"
    " LEFT JOIN ZTOKENTYPE ON ZTOKEN.ZTOKENTYPE = ZTOKENTYPE.Z_PK";

Rank rank_of_type(std::string_view type) {
  if (type == "Parameter") return Rank::kDetail;
  return type == "Section" || type == "Guide" ? Rank::kHeading : Rank::kObject;
}

std::string_view without_entries(std::string_view path) {
  while (path.starts_with(kEntryForPrograms)) path.remove_prefix(std::min(path.find('>'), path.size() - 1) + 1);
  return path;
}

// A place that was made for the index stands in its page as it stands there, with what is percent-encoded in it.
LinkTarget target_in_docset(std::string_view path, std::string_view anchor) {
  path = without_entries(path);
  LinkTarget target = target_of_entry("", path);
  const std::string_view place = without_entries(anchor.empty() ? olh_viewers::fragment_of(path) : anchor);
  target.place = place.starts_with(kMadePlace) ? std::string(place) : olh_viewers::decoded(place);
  return target;
}

// The value of a key in the description of a docset; "" without one.
std::string value_in(const Markup& description, std::string_view key) {
  const Element root = description.root();
  for (Element at = root; at; at = at.next_within(root))
    if (at.is("key") && at.text() == key) return at.next_sibling().text();
  return "";
}

class DocsetReader : public Reader {
 public:
  const char* kind() const override { return "docset"; }

  bool recognises(const Source& source) const override { return !source.tree.ending_in(kIndex).empty(); }

  // A link to pages elsewhere is none of the source.
  std::string folder(const Source& source) override {
    const std::string folder = folder_of(index_in(source)) + "Documents";
    const auto first = std::ranges::lower_bound(source.tree.names(), folder + "/");
    return first != source.tree.names().end() && first->starts_with(folder + "/") ? folder : "";
  }

  void read(const Source& source, const SourceTree&, Manual& manual) override {
    const std::string file = index_in(source);
    const Database index(source.path_of(file));
    const auto take = [&manual](const Database::Row& row) {
      const LinkTarget target = target_in_docset(row[2], row[3]);
      const std::string name(row[0]);
      manual.add_topic({name, target.page, target.place, name, rank_of_type(row[1])});
    };
    const bool is_older = !index.has_table("searchIndex");
    if (is_older && !index.has_table("ZTOKEN"))
      throw Refusal(kNoSource, file + " is no index of a docset: it has neither a searchIndex nor a ZTOKEN.");
    index.for_each(is_older ? kTokens : kDocsetIndex, take);
    const std::string described = (fs::path(folder_of(file)) / "../Info.plist").lexically_normal().string();
    const Markup description = Markup::xml(source.tree.read(described).value_or(""));
    manual.title = value_in(description, "CFBundleName");
    manual.start = target_of_entry("", without_entries(value_in(description, "dashIndexFilePath"))).page;
    if (const std::size_t others = source.tree.ending_in(kIndex).size(); others > 1)
      manual.notes.push_back(file + " is read, and none of the other docsets: " + std::to_string(others - 1));
  }

  bool is_place(std::string_view identifier) const override { return !identifier.starts_with(kMadePlace); }

  void read_page(const HtmlPage& page, Manual& manual) override { order_.take(page, manual); }

  void finish(Manual& manual) override {
    for (const std::string& page : order_.pages(manual)) manual.add_chapter({0, "", page, ""});
  }

 private:
  static std::string index_in(const Source& source) { return source.tree.ending_in(kIndex).front(); }
  static std::string folder_of(const std::string& file) { return file.substr(0, file.rfind('/') + 1); }

  ReadingOrder order_;
};

}  // namespace

std::unique_ptr<Reader> docset_reader() { return std::make_unique<DocsetReader>(); }

}  // namespace olh_import
