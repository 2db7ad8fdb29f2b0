// The words of a text, as the index holds them and a query asks for them.
//
// Knows    what a word is: letters of one case without accents; East Asian text by pairs of characters; a symbol of a
//          program (os.path.join, OLH_DEBUG, --print, OlhHelpCall, C++) as a whole and by its parts.
// Not      stems and languages (olh-index).
// For      olh-index, and index_search; the pages have the same in QEL/lib/find.js.
#ifndef OLH_TOOLS_SEARCH_WORDS_IN_TEXT_H
#define OLH_TOOLS_SEARCH_WORDS_IN_TEXT_H

#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace olh_search {

// Parts or wholes of a symbol, each once.
class SymbolWords {
 public:
  // Leaves out what is empty or longer than any word that anybody types, and what is one too many.
  void add(std::string_view word);
  void clear() { words_.clear(); }

  auto begin() const { return words_.begin(); }
  auto end() const { return words_.end(); }
  bool is_empty() const { return words_.empty(); }
  bool operator==(const SymbolWords& other) const { return words_ == other.words_; }
  std::size_t size() const { return words_.size(); }

 private:
  static constexpr std::size_t kMost = 32;
  static constexpr std::size_t kLongest = 64;  // bytes
  std::vector<std::string_view> words_;
  std::array<char, kMost * kLongest> letters_;
};

struct Symbol {
  SymbolWords parts;   // of a plain word: itself
  SymbolWords wholes;  // of a plain word: none
};

// A word or symbol as it is written, or a pair of characters; what is in one.
using TakeToken = std::function<void(std::string_view)>;
void each_token(std::string_view text, const TakeToken& take);
void read_symbol(std::string_view token, Symbol& symbol);

// Calls for each word or symbol, in the order of the text; what it holds is gone after the call.
void each_word(std::string_view text, const std::function<void(const Symbol&)>& call);

// Small letters without accents.
std::string folded(std::string_view text);

// Cuts off what is more than so many bytes, between two characters.
std::string_view cut_to(std::string_view text, std::size_t most);

}  // namespace olh_search

#endif
