// Words that mean the same: people look for "folder" where a manual says "directory".
//
// For      vocabulary.
#ifndef OLH_TOOLS_INDEX_SYNONYMS_H
#define OLH_TOOLS_INDEX_SYNONYMS_H

#include <span>
#include <string_view>

namespace olh_index {

// Words with a blank between two, a text for each meaning.
std::span<const std::string_view> english_synonyms();

}  // namespace olh_index

#endif
