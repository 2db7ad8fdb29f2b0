// Finding an entry by its document name, without walking the list for each document.
//
// Knows    the first entry of each name, counted from the head of a list.
// Not      the changes that others make to the list: an index is made at the start of a step, from the list itself.
// For      the steps of this room that look documents up.
#ifndef OLH_DMERGE_NAME_INDEX_H
#define OLH_DMERGE_NAME_INDEX_H

#include <memory_resource>
#include <string_view>
#include <unordered_map>

#include "olh/dmerge.h"

namespace olh {

class NameIndex {
 public:
  // Of the entries from `head` up to `end`. The names in the index point into them.
  explicit NameIndex(LibListEntry* head, const LibListEntry* end = nullptr) {
    for (LibListEntry* entry = head; entry != end; entry = entry->next)
      if (entry->docName != nullptr) first_.try_emplace(entry->docName, entry);
  }
  // Null when there is none.
  LibListEntry* find(std::string_view name) const {
    const auto found = first_.find(name);
    return found == first_.end() ? nullptr : found->second;
  }
  // Notes an entry that was put at the head.
  void add(LibListEntry* entry) { first_.insert_or_assign(entry->docName, entry); }

 private:
  std::pmr::monotonic_buffer_resource memory_;
  std::pmr::unordered_map<std::string_view, LibListEntry*> first_{&memory_};
};

}  // namespace olh

#endif
