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

#include "index_pieces.h"

namespace olh_search {

inline constexpr const char* kTexts = "QELdata/QELSearchText.js";  // below a manual
inline constexpr std::size_t kMostBytesOfTexts = std::size_t{256} * 1024 * 1024;

struct IndexSource {
  std::string name;
  std::string title;
  bool is_pdf = false;
};

// The documents of a root; nothing where it has no list of them.
struct IndexSources {
  std::vector<IndexSource> documents;
  Sum sum;  // of the list; that of an index has what is read of each document, too
};
std::optional<IndexSources> sources_of_index(const std::string& root);

// The two scripts of an HTML manual; `texts` is nothing where there are none, or too many. A PDF, which may be large, is not
// read: its size has to do for the sum.
struct ManualScripts {
  std::string table;
  std::optional<std::string> texts;
};
ManualScripts read_source(const std::string& root, const IndexSource& document, Sum& sum);

// The sum that an index of this root has when it is up to date; "" where the root has no list of documents.
std::string sum_of_sources(const std::string& root);

}  // namespace olh_search

#endif
