// The two option files: which of them is which, and where the one of a documentation tree lies.
//
// Knows    that an alternate root shares the file of the tree that named it.
// Not      what stands in them (option_dictionary reads, option_file_edit writes).
// For      option_file_read and option_file_write.
#ifndef OLH_DOCLIST_OPTION_FILES_H
#define OLH_DOCLIST_OPTION_FILES_H

#include "bounded_text.h"
#include "olh_doclist.h"

namespace olh {

// The codes that tell the files apart.
enum OptionFile : int { kUserFile = 1, kTreeFile = 2 };

// The root whose options file an entry of the search path uses.
inline std::string_view tree_of(const OlhPathList& entry) noexcept {
  return text_of(is_empty(entry.parent) ? entry.path : entry.parent);
}

}  // namespace olh

#endif
