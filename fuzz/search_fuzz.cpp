// What olh reads of a root's search index: whatever its pieces say, a search ends, and names pages and sections of its head.
#include <algorithm>

#include "fuzz.h"
#include "index_search.h"

namespace {

using namespace olh_search;

void check_search(const IndexHead& head, const LoadPiece& load, const std::string& query) {
  const std::size_t pages = head.first_sections.size() - 1;
  for (const std::vector<std::string>& manuals : {std::vector<std::string>{}, {"guide"}}) {
    const Ranking ranking = find(head, load, query, manuals);
    expect(ranking.words.size() <= 16, "a query has a bound");
    expect(ranking.complete <= ranking.pages.size(), "complete pages are among the pages");
    for (const RankedPage& ranked : ranking.pages) {
      expect(ranked.page < pages, "a page of the head");
      expect(
          ranked.section >= head.first_sections[ranked.page] && ranked.section < head.first_sections[ranked.page + 1],
          "a section of the page");
    }
    expect(hits_of(head, load, ranking, 0, 10).size() <= 10, "no more hits than were asked for");
  }
}

}  // namespace

void try_input(const std::string& input) {
  const std::vector<std::string> parts = parts_of(input, 5);
  const std::optional<IndexHead> head = head_in(parts[0]);
  if (!head) return;
  expect(head->sections <= kMostSections, "the sections have a bound");
  const LoadPiece load = [&](const std::string& name) {
    return name.starts_with("words_") ? parts[1] : name.starts_with("texts_") ? parts[2] : parts[3];
  };
  check_search(*head, load, parts[4]);
}
