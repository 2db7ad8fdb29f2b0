// The entries of the library lists, in the order in which they are listed.
//
// Knows    which entries are listed, and in which forms a document exists.
// For      the two writers of lists (library_lists, basic_page).
#ifndef OLH_DMERGE_LISTED_ENTRY_H
#define OLH_DMERGE_LISTED_ENTRY_H

#include <string_view>
#include <vector>

#include "registries.h"

namespace olh {

// An entry with its texts measured. The record tells what it is and whether it still has its name.
struct ListedEntry {
  std::string_view title;
  std::string_view name;
  LibListEntry* record;
};
using Entries = std::vector<ListedEntry>;

inline bool is_listed(const ListedEntry& entry) noexcept { return entry.record->docName != nullptr; }

inline bool has_html(const ListedEntry& entry) noexcept {
  return entry.record->type == nullptr || entry.record->type == std::string_view(kHtmlType);
}

inline bool has_pdf(const ListedEntry& entry) noexcept {
  return entry.record->type == nullptr || entry.record->type == std::string_view(kPdfType);
}

}  // namespace olh

#endif
