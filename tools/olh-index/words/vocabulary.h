// The words of all manuals, and where they stand.
//
// Knows    words and their stems; the postings of a stem: sections, and pages by their titles, each with how much it says
//          of the stem.
// Not      how much a word in a title or text counts (index_maker).
// For      index_maker, index_folder.
#ifndef OLH_TOOLS_INDEX_VOCABULARY_H
#define OLH_TOOLS_INDEX_VOCABULARY_H

#include <cstdint>
#include <deque>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "stems.h"
#include "text_numbers.h"

namespace olh_index {

using StemNumber = std::uint32_t;

struct Stem {
  std::string postings;
  std::uint32_t last_section = 0;
  std::uint32_t sections = 0;  // how many
  std::uint32_t last_page = 0;
  bool is_meaning = false;  // of words that mean the same
  std::string titles;       // pages with the stem in their title, as postings
};

class Vocabulary {
 public:
  // The words to come are of this language.
  void set_language(const std::string& language);
  struct KnownWord {
    StemNumber stem;
    bool is_common;  // too little to be looked for in running text
    // What its stem means, each a stem of its own, shared with other words; nothing for a word that was not looked up.
    const std::vector<StemNumber>* meanings;
  };
  KnownWord look_up(std::string_view word) {
    const std::uint32_t number = words_.number_of(word);
    if (number < known_.size() && known_[number].meanings != nullptr) return known_[number];
    return learn(number);
  }

  // Sections and pages come in order. `share` is at most kMostInOneCharacter.
  void add_posting(StemNumber stem, std::uint32_t section, std::uint32_t share);
  void add_title(StemNumber stem, std::uint32_t page, std::uint32_t share);

  std::size_t stems() const { return stems_.size(); }
  const Stem& stem(StemNumber number) const { return stems_[number]; }
  std::string common_words() const { return language_.common_words(); }

  struct Word {
    std::string_view text;
    std::span<const StemNumber> stems;  // one for each language that has it, mostly
  };
  // All words in the order of their bytes.
  std::vector<Word> sorted_words() const;

 private:
  KnownWord learn(std::uint32_t word);
  void add_stem(std::uint32_t word, StemNumber stem);
  StemNumber new_stem();
  void add_english_meanings();

  Stems language_;
  std::vector<Stem> stems_;
  std::deque<std::vector<StemNumber>> meanings_;  // of each stem
  bool has_meanings_ = false;
  TextNumbers stem_texts_;
  std::vector<StemNumber> stems_of_texts_;
  std::string words_language_;  // at present
  TextNumbers words_;
  std::vector<KnownWord> known_;                                          // of each word, in this language
  std::vector<StemNumber> first_stems_;                                   // of each word: most have no other one
  std::unordered_map<std::uint32_t, std::vector<StemNumber>> all_stems_;  // of words that have several
};

}  // namespace olh_index

#endif
