// What a search of a root's index finds, for a terminal.
//
// Knows    where the index lies, which manuals a scope has, and how a hit is written as text.
// Not      how a query is answered (tools/search).
// For      search.
#ifndef OLH_TOOLS_SEARCH_HITS_H
#define OLH_TOOLS_SEARCH_HITS_H

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <vector>

#include "index_search.h"

namespace olh {

struct SearchHits {
  olh_search::Ranking ranking;
  std::vector<olh_search::Hit> hits;  // the best ones
  std::string root;
};

// Nothing when the root has no index that can be read; `manuals` are the names of those that are searched, all without one.
std::optional<SearchHits> search_hits(const std::string& root, const std::string& query,
                                      const std::vector<std::string>& manuals);

// The manuals and PDFs that a portal lists.
std::vector<std::string> documents_of_portal(const std::string& root, const std::string& portal);

// The words of a help call that shows a hit.
struct HitCall {
  std::string document;
  std::string topic;
};
HitCall call_for(const olh_search::Hit& hit);

std::string as_text(const SearchHits& found, const std::string& query);
nlohmann::json as_json(const SearchHits& found);

}  // namespace olh

#endif
