#include "vocabulary.h"

#include <algorithm>

#include "index_pieces.h"
#include "packed_numbers.h"
#include "synonyms.h"

namespace olh_index {

void Vocabulary::set_language(const std::string& language) {
  if (language == words_language_) return;
  words_language_ = language;
  language_.set_language(language);
  words_.clear();
  if (language_.is_english() && !has_meanings_) add_english_meanings();
}

StemNumber Vocabulary::new_stem(bool is_common) {
  stems_.emplace_back();
  common_.push_back(is_common);
  meanings_.emplace_back();
  return static_cast<StemNumber>(stems_.size() - 1);
}

void Vocabulary::add_english_meanings() {
  has_meanings_ = true;
  for (const std::string_view line : english_synonyms()) {
    const StemNumber meaning = new_stem(false);
    for (const std::string& word : olh_search::words_with_blanks(line)) {
      meanings_[stem_of(word)].push_back(meaning);
      all_words_[word].push_back(meaning);
    }
  }
}

StemNumber Vocabulary::stem_of(const std::string& word) {
  if (const auto known = words_.find(word); known != words_.end()) return known->second;
  const auto [found, is_new] =
      stem_numbers_.try_emplace(language_.stem_of(word), static_cast<StemNumber>(stems_.size()));
  if (is_new) new_stem(language_.is_common(word));
  std::vector<StemNumber>& of_word = all_words_[word];
  const auto add = [&of_word](StemNumber stem) {
    if (std::ranges::find(of_word, stem) == of_word.end()) of_word.push_back(stem);
  };
  add(found->second);
  std::ranges::for_each(meanings_[found->second], add);
  words_.emplace(word, found->second);
  return found->second;
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
