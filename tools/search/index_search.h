// A search of the index of a documentation root.
//
// Knows    which pages answer a query, by which of their sections, and in which order.
// Not      where pieces come from, and how hits are shown.
// For      olh; QEL/lib/find.js is the same for the pages, and gives the same hits in the same order.
#ifndef OLH_TOOLS_SEARCH_INDEX_SEARCH_H
#define OLH_TOOLS_SEARCH_INDEX_SEARCH_H

#include <functional>
#include <string>
#include <vector>

#include "index_pieces.h"

namespace olh_search {

// The script of a piece, "words_3" for example; "" when it is not there.
using LoadPiece = std::function<std::string(const std::string& name)>;

struct RankedPage {
  std::uint32_t page = 0;
  std::uint32_t section = 0;  // the one that answers best
  std::uint32_t words = 0;    // which of the words the page has, a bit for each
  std::uint64_t points = 0;
};

struct LookedForWord {
  std::string asked;
  std::string taken;  // a word near to it, when it is nowhere itself; "" when there is none either
  std::string mark;   // what the words of an answer begin with
};

struct Ranking {
  std::vector<LookedForWord> words;
  std::vector<RankedPage> pages;  // the best first
  std::size_t complete = 0;       // how many of them have all words
  bool is_cut = false;            // a phrase was only looked for in the best pages
};

// `manuals` are the names of those that are searched; all without one.
Ranking find(const IndexHead& head, const LoadPiece& load, const std::string& query,
             const std::vector<std::string>& manuals);

struct Hit {
  std::string manual;  // its name
  std::string manual_title;
  IndexedPage page;
  IndexedSection section;
};

// Hits of a ranking, from `first` on; one whose text is not there is left out.
std::vector<Hit> hits_of(const IndexHead& head, const LoadPiece& load, const Ranking& ranking, std::size_t first,
                         std::size_t count);

}  // namespace olh_search

#endif
