// What a person asks for.
//
// Knows    which words of a query are looked for, and which texts in quotation marks.
// Not      the index (index_search).
// For      index_search; the pages have the same in QEL/lib/find.js.
#ifndef OLH_TOOLS_SEARCH_QUERY_H
#define OLH_TOOLS_SEARCH_QUERY_H

#include <string>
#include <string_view>
#include <vector>

namespace olh_search {

struct Query {
  std::vector<std::string> words;                 // at most 16, each once
  std::vector<std::string> wholes;                // symbols, of which `words` has the parts
  std::vector<std::vector<std::string>> phrases;  // the words of each
};

// Common words ("the", "how") are left out unless there are no others.
Query query_in(std::string_view text, const std::vector<std::string>& common);

// All words of a text, one after the other.
std::vector<std::string> words_in_order(std::string_view text);

}  // namespace olh_search

#endif
