#include "script_lists.h"

#include <unordered_map>

#include "shared.h"

namespace olh {

namespace {

constexpr std::string_view kLibrary = "mLibraryList.push([";
constexpr std::string_view kPdf = "mPDFList.push(";
constexpr std::string_view kItem = "List.fAddItem";
constexpr std::string_view kLink = "tomedeck=";

// [title, name] is a manual in the manuals' list; in the portals' list it is both, and a third text says otherwise.
ListedDocument library_in(std::string_view line, bool names_kinds) {
  const std::string kind = quoted_in(line, 2).value_or("");
  return {quoted_in(line, 1).value_or(""), quoted_in(line, 0).value_or(""), kind != "pdf",
          kind == "pdf" || (names_kinds && kind.empty())};
}

}  // namespace

std::optional<std::string> quoted_in(std::string_view line, int index) {
  std::size_t begin = line.find('"');
  for (int skipped = 0; skipped < 2 * index && begin != std::string_view::npos; ++skipped)
    begin = line.find('"', begin + 1);
  const std::size_t end = begin == std::string_view::npos ? begin : line.find('"', begin + 1);
  if (end == std::string_view::npos) return std::nullopt;
  return std::string(line.substr(begin + 1, end - begin - 1));
}

std::vector<ListedDocument> documents_in_list(std::string_view script) {
  const bool names_kinds = script.find("mPDFList") == std::string_view::npos;
  std::vector<ListedDocument> documents;
  std::unordered_map<std::string, std::size_t> positions;
  const auto take = [&](const ListedDocument& listed) {
    if (listed.name.empty()) return;
    const auto [position, is_new] = positions.try_emplace(listed.name, documents.size());
    if (is_new) return documents.push_back(listed);
    documents[position->second].pdf |= listed.pdf;
  };
  for (const std::string& line : lines_of(script)) {
    if (line.find(kLibrary) != std::string::npos) {
      take(library_in(line, names_kinds));
    } else if (line.find(kPdf) != std::string::npos) {
      take({quoted_in(line, 0).value_or(""), "", false, true});
    }
  }
  return documents;
}

std::vector<ListedItem> items_in_list(std::string_view script) {
  std::vector<ListedItem> items;
  int number = 0;
  for (const std::string& line : lines_of(script)) {
    ++number;
    const std::size_t item = line.find(kItem);
    if (item == std::string::npos || line.find("//") < item) continue;
    const auto name = quoted_in(line.substr(item), 1);
    if (!name) continue;
    const std::size_t link = name->find(kLink);
    items.push_back({number, link == std::string::npos ? *name : name->substr(link + kLink.size()),
                     quoted_in(line.substr(item), 0).value_or("")});
  }
  return items;
}

std::optional<std::vector<ListedDocument>> listed_documents(const std::string& root) {
  for (const char* list : {kPortalsLibraryList, kManualsLibraryList})
    if (const auto script = text_in_root(root, list)) return documents_in_list(*script);
  return std::nullopt;
}

std::optional<std::vector<ListedItem>> listed_portals(const std::string& root) {
  const auto script = text_in_root(root, kInstalledPortals);
  return script ? std::optional(items_in_list(*script)) : std::nullopt;
}

}  // namespace olh
