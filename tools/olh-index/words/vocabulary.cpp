#include "vocabulary.h"

#include <algorithm>

#include "index_pieces.h"
#include "packed_numbers.h"
#include "synonyms.h"

namespace olh_index {

namespace {

constexpr StemNumber kNoStem = ~StemNumber{0};

}  // namespace

void Vocabulary::set_language(const std::string& language) {
  if (language == words_language_) return;
  words_language_ = language;
  language_.set_language(language);
  known_.clear();
  if (language_.is_english() && !has_meanings_) add_english_meanings();
}

StemNumber Vocabulary::new_stem() {
  stems_.emplace_back();
  meanings_.emplace_back();
  return static_cast<StemNumber>(stems_.size() - 1);
}

void Vocabulary::add_english_meanings() {
  has_meanings_ = true;
  for (const std::string_view line : english_synonyms()) {
    const StemNumber meaning = new_stem();
    stems_[meaning].is_meaning = true;
    for (const std::string& word : olh_search::words_with_blanks(line)) {
      meanings_[look_up(word).stem].push_back(meaning);
      add_stem(words_.number_of(word), meaning);
    }
  }
}

void Vocabulary::add_stem(std::uint32_t word, StemNumber stem) {
  StemNumber& first = first_stems_[word];
  if (first == kNoStem) first = stem;
  if (first == stem) return;
  std::vector<StemNumber>& all = all_stems_.try_emplace(word, 1, first).first->second;
  if (std::ranges::find(all, stem) == all.end()) all.push_back(stem);
}

Vocabulary::KnownWord Vocabulary::learn(std::uint32_t number) {
  const std::string word(words_.text(number));
  const std::uint32_t stem_text = stem_texts_.number_of(language_.stem_of(word));
  if (stem_text == stems_of_texts_.size()) stems_of_texts_.push_back(new_stem());
  const StemNumber stem = stems_of_texts_[stem_text];
  if (first_stems_.size() < words_.size()) first_stems_.resize(words_.size(), kNoStem);
  add_stem(number, stem);
  for (const StemNumber meaning : meanings_[stem]) add_stem(number, meaning);
  if (known_.size() < words_.size()) known_.resize(words_.size(), {0, false, nullptr});
  return known_[number] = {stem, language_.is_common(word), &meanings_[stem]};
}

void Vocabulary::add_posting(StemNumber number, std::uint32_t section, std::uint32_t share) {
  Stem& stem = stems_[number];
  olh_search::append_number(stem.postings, section - stem.last_section);
  olh_search::append_character(stem.postings, share);
  stem.last_section = section;
  ++stem.sections;
}

void Vocabulary::add_title(StemNumber number, std::uint32_t page, std::uint32_t share) {
  Stem& stem = stems_[number];
  olh_search::append_number(stem.titles, page - stem.last_page);
  olh_search::append_character(stem.titles, share);
  stem.last_page = page;
}

namespace {

// The first bytes as a number that is in their order: most words differ in these.
std::uint64_t order_of(std::string_view text) {
  std::uint64_t number = 0;
  for (std::size_t at = 0; at < sizeof number; ++at)
    number = number << 8 | (at < text.size() ? static_cast<unsigned char>(text[at]) : 0U);
  return number;
}

}  // namespace

std::vector<Vocabulary::Word> Vocabulary::sorted_words() const {
  std::vector<std::pair<std::uint64_t, Word>> words;
  words.reserve(words_.size());
  for (std::uint32_t number = 0; number < words_.size(); ++number) {
    std::span<const StemNumber> stems(&first_stems_[number], 1);
    if (const auto several = all_stems_.find(number); several != all_stems_.end()) stems = several->second;
    words.push_back({order_of(words_.text(number)), {words_.text(number), stems}});
  }
  std::ranges::sort(words, [](const auto& a, const auto& b) {
    return a.first != b.first ? a.first < b.first : a.second.text < b.second.text;
  });
  std::vector<Word> sorted;
  sorted.reserve(words.size());
  for (const auto& [bytes, word] : words) sorted.push_back(word);
  return sorted;
}

}  // namespace olh_index
