// The results that olh search has listed last in this terminal.
//
// Knows    where they are kept: a file of this session, of this user alone; those of terminals that are gone are removed.
// Not      what finds them (search_hits), and how one is shown (show_result).
// For      search, which keeps them, and show.
#ifndef OLH_TOOLS_KEPT_RESULTS_H
#define OLH_TOOLS_KEPT_RESULTS_H

#include <optional>
#include <string>
#include <vector>

#include "search_hits.h"

namespace olh {

struct ListedResults {
  std::string query;
  std::string scope;
  std::string root;
  std::string index;  // the folder of the index that gave them: another one may give others
  std::vector<ListedHit> hits;
};

ListedResults listed_results(const SearchHits& found, const std::string& query, const std::string& scope);

// In place of the list that was kept before. A list that cannot be kept spoils no search: nothing is said.
void keep_results(const ListedResults& results);
// Nothing when none is kept that can be read.
std::optional<ListedResults> kept_results();

}  // namespace olh

#endif
