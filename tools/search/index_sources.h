// What the search index of a root is made from.
//
// Knows    the list of documents, which files say what is found in each, and a sum of all of these: an index keeps it, so
//          that one which no longer matches is recognised without making it anew.
// Not      what is in those files (olh-index).
// For      olh-index, and olh, which says when an index is out of date.
#ifndef OLH_TOOLS_SEARCH_INDEX_SOURCES_H
#define OLH_TOOLS_SEARCH_INDEX_SOURCES_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace olh_search {

inline constexpr const char* kTexts = "QELdata/QELSearchText.js";  // below a manual
inline constexpr std::size_t kMostBytesOfTexts = std::size_t{256} * 1024 * 1024;

struct IndexSource {
  std::string name;
  std::string title;
  bool is_pdf = false;
};

struct IndexSources {
  std::vector<IndexSource> documents;
  std::string sum;
};
// Nothing where the root has no list of documents.
std::optional<IndexSources> sources_of_index(const std::string& root);

// The texts in a line CALL(["A","B", ...]); nothing for another line.
std::vector<std::string> texts_in_call(std::string_view line, std::string_view call);

}  // namespace olh_search

#endif
