// What a search of a root's index finds, for a terminal.
//
// Knows    where the index lies, which manuals a scope has, what shows a hit, and how it is written as text.
// Not      how a query is answered (tools/search).
// For      search, and show through the results that were listed.
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
  std::string index;  // the folder of the index
};

// The best `wanted` hits. Nothing when the root has no index that can be read; `manuals` are the names of those that are
// searched, all without one.
std::optional<SearchHits> search_hits(const std::string& root, const std::string& query,
                                      const std::vector<std::string>& manuals, std::size_t wanted);

// The manuals and PDFs that a portal lists.
std::vector<std::string> documents_of_portal(const std::string& root, const std::string& portal);

// What shows a hit.
struct ListedHit {
  std::string title;     // with the heading, if it is one of a section
  std::string document;  // as a help call names it; of a PDF with ".pdf"
  std::string topic;     // of a manual; "" for none
  std::string place;     // in its file: an anchor, "page=3" of a PDF; "" for the beginning
  bool is_pdf = false;
  std::string page;  // below the root, where the place is one within the topic; else ""
};
ListedHit listed(const olh_search::Hit& hit);

// The folder of the index that the root has now; "" without one.
std::string index_at(const std::string& root);

std::string as_text(const SearchHits& found, const std::string& query);
nlohmann::json as_json(const SearchHits& found);

}  // namespace olh

#endif
