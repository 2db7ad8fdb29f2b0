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

using Entries = std::vector<LibListEntry*>;

inline bool is_listed(const LibListEntry& entry) noexcept { return entry.docName != nullptr; }

inline bool has_html(const LibListEntry& entry) noexcept {
  return entry.type == nullptr || entry.type == std::string_view(kHtmlType);
}

inline bool has_pdf(const LibListEntry& entry) noexcept {
  return entry.type == nullptr || entry.type == std::string_view(kPdfType);
}

}  // namespace olh

#endif
