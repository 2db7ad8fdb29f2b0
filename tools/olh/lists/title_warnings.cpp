#include "title_warnings.h"

#include <algorithm>

#include "files.h"
#include "shared.h"

namespace olh {

bool is_more_than_text(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < ' ' || byte == 127 || c == '"' || c == '\\' || c == '<' || c == '&';
}

namespace {

struct TitleSource {
  std::string file;
  int line = 0;
};

// The first line of the file that holds the mark, as the generator takes it.
TitleSource line_with(std::string_view mark, const std::string& file, const std::string& root) {
  const std::vector<std::string> lines = lines_of(text_in_root(root, file).value_or(""));
  const auto found =
      std::ranges::find_if(lines, [&](const std::string& line) { return line.find(mark) != std::string::npos; });
  return {file, found == lines.end() ? 0 : static_cast<int>(found - lines.begin()) + 1};
}

// The line that lists a portal or document by this name with this title; line 0 where there is none.
TitleSource item_in(const std::string& file, const std::string& name, const std::string& title,
                    const std::string& root) {
  for (const ListedItem& item : items_in_list(text_in_root(root, file).value_or("")))
    if (item.name == name && item.title == title) return {file, item.line};
  return {file};
}

std::string documents_of(const std::string& portal) { return "tomedecks/" + portal + "/js/doclist.js"; }

TitleSource source_of_document(const ListedDocument& one, const ListRun& run, const std::string& root) {
  if (one.html)
    return line_with("QELAddBookVar(\"DocTitle\"", "htmldocs/" + one.name + "/QELdata/QELAllData.js", root);
  if (std::ranges::find(run.titled_by_portals, one.name) != run.titled_by_portals.end())
    for (const std::string& portal : olh_viewers::names_in(place_in_root(root, "tomedecks")).names)
      if (TitleSource item = item_in(documents_of(portal), one.name, one.title, root); item.line > 0) return item;
  return {"pdfdocs/" + one.name + ".pdf"};
}

// The list that is written by hand, else the portal's own script.
TitleSource source_of_portal(const ListedItem& portal, const std::string& root) {
  const TitleSource item = item_in(kListOfPortals, portal.name, portal.title, root);
  return item.line > 0 ? item : line_with("mTomeDeckName = \"", documents_of(portal.name), root);
}

}  // namespace

std::string sentence_of(const TitleWarning& one) { return one.what + " " + quoted(one.text) + one.harm; }

std::vector<TitleWarning> title_warnings(const ListRun& run, const std::string& root) {
  std::vector<TitleWarning> warnings;
  const auto look_at = [&](const char* what, const std::string& text, const auto& source) {
    const auto found = std::ranges::find_if(text, is_more_than_text);
    if (found == text.end()) return;
    const TitleSource from = source();
    warnings.push_back({from.file, from.line, what, text,
                        ": the lists take '" + visible(std::string(1, *found)) +
                            "' as it is, and a page may run what is there as script"});
  };
  for (const ListedDocument& one : run.documents) {
    look_at("is named", one.name,
            [&] { return TitleSource{one.html ? "htmldocs/" + one.name : "pdfdocs/" + one.name + ".pdf"}; });
    const bool is_own_name = one.title == one.name || one.title == one.name + ".pdf";
    if (!is_own_name) look_at("gives the title", one.title, [&] { return source_of_document(one, run, root); });
  }
  for (const ListedItem& portal : run.listed_portals)
    look_at("gives the title", portal.title, [&] { return source_of_portal(portal, root); });
  look_at("gives the release name", run.release, [&] { return line_with("mReleaseName", kListOfPortals, root); });
  return warnings;
}

}  // namespace olh
