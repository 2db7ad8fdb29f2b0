// A piece of words of a search index: groups, each with the words of one stem and where it stands.
//
// Knows    their form, which is short, since most of an index are words that stand in few places: one text of groups with
//          "~" between two. A group is its words with a blank between two, "!", its weight and its postings as packed
//          numbers, and "!" and its titles if there are any. Of a word stands how many characters it shares with the word
//          before it in the piece, as a packed character, and the rest; only ASCII is shared, so that bytes and the
//          characters of a script are the same.
// Not      where pieces lie (index_pieces), and what postings give (points).
// For      index_search; olh-index writes them; the pages read them in QEL/lib/find.js.
#ifndef OLH_TOOLS_SEARCH_WORD_GROUPS_H
#define OLH_TOOLS_SEARCH_WORD_GROUPS_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace olh_search {

// Words of one stem, with a blank between two; how much the stem counts, at most 1000; its postings, each a number and a
// share of at most 89.
struct WordGroup {
  std::string words;
  std::uint32_t weight = 0;
  std::string postings;  // sections
  std::string titles;    // pages
};

std::string packed_groups(const std::vector<WordGroup>& groups);
// The groups that have a word, or one that begins so. Whatever the text holds, it ends, and no more than a hundred groups are
// unpacked.
enum class Wanted { kWord, kBeginning };
std::vector<WordGroup> groups_with(std::string_view word, std::string_view packed, Wanted wanted = Wanted::kWord);

// The packed groups of a script; "" when it is no piece.
std::string packed_groups_in(std::string_view script);

}  // namespace olh_search

#endif
