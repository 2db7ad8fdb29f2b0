#include "known_tokens.h"

namespace olh_index {

void KnownTokens::set_language(const std::string& language) {
  if (language == language_) return;
  language_ = language;
  vocabulary_.set_language(language);
  texts_ = {};
  tokens_.clear();
  given_.clear();
}

void KnownTokens::learn(std::string_view token) {
  Known known = {static_cast<std::uint32_t>(given_.size()), 0, 0};
  olh_search::read_symbol(token, symbol_);
  for (const std::string_view whole : symbol_.wholes)
    given_.push_back({vocabulary_.look_up(whole).stem, Stands::kAsSymbol, false});
  for (const std::string_view part : symbol_.parts) {
    const Vocabulary::KnownWord word = vocabulary_.look_up(part);
    given_.push_back({word.stem, Stands::kAsWord, word.is_common});
    for (const StemNumber meaning : *word.meanings) given_.push_back({meaning, Stands::kAsMeaning, false});
    ++known.words;
  }
  known.count = static_cast<std::uint32_t>(given_.size()) - known.first;
  tokens_.push_back(known);
}

}  // namespace olh_index
