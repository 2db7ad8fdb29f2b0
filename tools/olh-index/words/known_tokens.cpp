#include "known_tokens.h"

namespace olh_index {

namespace {

constexpr std::size_t kMostKnown = std::size_t{1} << 18;

}  // namespace

void KnownTokens::set_language(const std::string& language) {
  if (language == language_) return;
  language_ = language;
  vocabulary_.set_language(language);
  forget();
}

void KnownTokens::forget() {
  texts_ = {};
  tokens_ = {};
  given_ = {};
}

// Its number.
std::uint32_t KnownTokens::learn(std::string_view token) {
  if (tokens_.size() == kMostKnown) {
    forget();
    texts_.number_of(token);
  }
  Known known;
  known.first = static_cast<std::uint32_t>(given_.size());
  olh_search::read_symbol(token, symbol_);
  for (const std::string_view whole : symbol_.wholes)
    given_.push_back({vocabulary_.look_up(whole).stem, Stands::kAsSymbol, false});
  for (const std::string_view part : symbol_.parts) {
    const Vocabulary::KnownWord word = vocabulary_.look_up(part);
    given_.push_back({word.stem, Stands::kAsWord, word.is_common});
    for (const StemNumber meaning : *word.meanings) given_.push_back({meaning, Stands::kAsMeaning, false});
    ++known.words;
  }
  known.count = static_cast<std::uint16_t>(given_.size() - known.first);
  if (known.count == 1) {
    known.only = given_.back();
    given_.pop_back();
  }
  tokens_.push_back(known);
  return static_cast<std::uint32_t>(tokens_.size() - 1);
}

}  // namespace olh_index
