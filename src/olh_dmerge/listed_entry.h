// The entries of the library lists, in the order in which they are listed.
//
// Knows    which entries are listed, and in which forms a document exists.
// For      the two writers of lists (library_lists, basic_page).
#ifndef OLH_DMERGE_LISTED_ENTRY_H
#define OLH_DMERGE_LISTED_ENTRY_H

#include <memory_resource>
#include <string_view>
#include <vector>

#include "bounded_text.h"
#include "kept_text.h"
#include "registries.h"

namespace olh {

// An entry as the lists need it. All that they ask of it several times stands here and in the memory given, since the
// records of a large root lie far apart.
struct ListedEntry {
  ListedEntry(LibListEntry& entry, std::pmr::memory_resource& memory)
      : title(kept_text(memory, text_of(entry.title))),
        name(kept_text(memory, text_of(entry.docName))),
        record(&entry),
        is_listed(entry.docName != nullptr),
        has_html(entry.type == nullptr || entry.type == std::string_view(kHtmlType)),
        has_pdf(entry.type == nullptr || entry.type == std::string_view(kPdfType)) {}

  std::string_view title;
  std::string_view name;
  LibListEntry* record;
  bool is_listed;
  bool has_html;
  bool has_pdf;
};
using Entries = std::vector<ListedEntry>;

}  // namespace olh

#endif
