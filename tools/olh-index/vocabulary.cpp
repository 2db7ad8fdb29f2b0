#include "vocabulary.h"

#include <algorithm>

#include "index_pieces.h"
#include "packed_numbers.h"
#include "synonyms.h"

namespace olh_index {

// Most of the time that an index takes is for looking words up: few words in a bucket are worth the memory.
Vocabulary::Vocabulary() { words_.max_load_factor(0.25F); }

void Vocabulary::set_language(const std::string& language) {
  if (language == words_language_) return;
  words_language_ = language;
  language_.set_language(language);
  words_.clear();
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
      all_words_[word].push_back(meaning);
    }
  }
}

Vocabulary::KnownWord Vocabulary::look_up(const std::string& word) {
  if (const auto known = words_.find(word); known != words_.end()) return known->second;
  const auto [found, is_new] =
      stem_numbers_.try_emplace(language_.stem_of(word), static_cast<StemNumber>(stems_.size()));
  if (is_new) new_stem();
  const StemNumber stem = found->second;
  std::vector<StemNumber>& of_word = all_words_[word];
  const auto add = [&of_word](StemNumber one) {
    if (std::ranges::find(of_word, one) == of_word.end()) of_word.push_back(one);
  };
  add(stem);
  std::ranges::for_each(meanings_[stem], add);
  return words_.try_emplace(word, KnownWord{stem, language_.is_common(word), &meanings_[stem]}).first->second;
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

std::vector<Vocabulary::Word> Vocabulary::sorted_words() const {
  std::vector<Word> sorted;
  sorted.reserve(all_words_.size());
  for (const auto& [text, stems] : all_words_) sorted.push_back({text, stems});
  std::ranges::sort(sorted, {}, &Word::text);
  return sorted;
}

}  // namespace olh_index
