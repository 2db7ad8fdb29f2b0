// The word that a person meant, for one that is nowhere.
//
// Knows    what counts as near: the beginning of a word, one or two letters more, fewer, other or exchanged, another
//          ending.
// For      index_search; the pages have the same in QEL/lib/find.js.
#ifndef OLH_TOOLS_SEARCH_NEAR_WORDS_H
#define OLH_TOOLS_SEARCH_NEAR_WORDS_H

#include <string>
#include <vector>

namespace olh_search {

// The words near to one, best first; `words` in the order of their frequency. At most `most`.
std::vector<std::string> near_words(const std::string& word, const std::vector<std::string>& words, std::size_t most);

}  // namespace olh_search

#endif
