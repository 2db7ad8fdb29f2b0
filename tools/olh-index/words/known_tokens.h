// What the words and symbols of texts say, which are the same ones again and again.
//
// Knows    which stems a token gives: of its parts, of itself as a symbol, and of what it means; each token is taken apart
//          once, as long as they are not too many for the memory.
// Not      how much these count (stem_shares).
// For      index_maker.
#ifndef OLH_TOOLS_INDEX_KNOWN_TOKENS_H
#define OLH_TOOLS_INDEX_KNOWN_TOKENS_H

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "stem_shares.h"
#include "text_numbers.h"
#include "vocabulary.h"
#include "words_in_text.h"

namespace olh_index {

class KnownTokens {
 public:
  explicit KnownTokens(Vocabulary& vocabulary) : vocabulary_(vocabulary) {}

  // The tokens to come are of this language.
  void set_language(const std::string& language);
  // Each token is new again; what it gives stays the same.
  void forget();

  struct Given {
    StemNumber stem;
    Stands as;
    bool is_common;  // running text is not searched for it
  };
  struct Token {
    std::span<const Given> given;  // until the next call
    std::uint32_t words;           // how many
  };
  Token look_up(std::string_view token) {
    std::uint32_t number = texts_.number_of(token);
    if (number == tokens_.size()) number = learn(token);
    const Known& known = tokens_[number];
    return {{known.count == 1 ? &known.only : given_.data() + known.first, known.count}, known.words};
  }

 private:
  // Most tokens give one stem, which lies here: to look for it elsewhere takes as long as all the rest.
  struct Known {
    Given only = {};
    std::uint32_t first = 0;  // in given_, of several
    std::uint16_t count = 0;
    std::uint16_t words = 0;
  };
  std::uint32_t learn(std::string_view token);

  Vocabulary& vocabulary_;
  std::string language_;
  TextNumbers texts_;
  std::vector<Known> tokens_;
  std::vector<Given> given_;
  olh_search::Symbol symbol_;
};

}  // namespace olh_index

#endif
