// The words of a text, as the index holds them and a query asks for them.
//
// Knows    what a word is: letters of one case without accents; East Asian text by pairs of characters; a symbol of a
//          program (os.path.join, OLH_DEBUG, --print, OlhHelpCall, C++) as a whole and by its parts.
// Not      stems and languages (olh-index).
// For      olh-index, and index_search; the pages have the same in QEL/lib/find.js.
#ifndef OLH_TOOLS_SEARCH_WORDS_IN_TEXT_H
#define OLH_TOOLS_SEARCH_WORDS_IN_TEXT_H

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace olh_search {

struct Symbol {
  std::vector<std::string> parts;   // of a plain word: itself
  std::vector<std::string> wholes;  // of a plain word: none
};

// Calls for each word or symbol, in the order of the text.
void each_word(std::string_view text, const std::function<void(const Symbol&)>& call);

// Small letters without accents.
std::string folded(std::string_view text);

// Cuts off what is more than so many bytes, between two characters.
std::string_view cut_to(std::string_view text, std::size_t most);

}  // namespace olh_search

#endif
