// The search index of a root, made with its lists.
//
// Knows    the program that makes it, where that is installed.
// For      dmerge and new, list_trial.
#ifndef OLH_TOOLS_SEARCH_INDEX_H
#define OLH_TOOLS_SEARCH_INDEX_H

#include <string>

namespace olh {

// Where the index lies, below a root.
inline constexpr const char* kSearchIndex = "htmldocs/QEL/search";
inline constexpr const char* kHeadOfIndex = "htmldocs/QEL/search/head.js";

// Makes the index and returns its head; "" when there is none, which a warning says unless the program is not installed.
std::string make_search_index(const std::string& root);

// Whether it could be made, which needs the program and a list of documents, and is missing, or was made from other lists or
// texts than the root has now.
enum class IndexState { kGood, kMissing, kOld };
IndexState state_of_search_index(const std::string& root);

}  // namespace olh

#endif
