#include "word_pieces.h"

#include <algorithm>
#include <map>
#include <set>
#include <span>

#include "json_texts.h"
#include "points.h"
#include "word_groups.h"

namespace olh_index {

namespace {

constexpr std::size_t kBytesOfPiece = std::size_t{40} * 1024;
constexpr std::size_t kBytesOfMeantPiece = std::size_t{64} * 1024;
constexpr std::size_t kMostNearWords = 30000;
constexpr std::size_t kShortestNearWord = 4;

using Words = std::vector<Vocabulary::Word>;

std::string in_quotes(std::string_view text) {
  std::string json;
  olh_search::append_json(json, text);
  return json;
}

// Groups of one stem, as long as they fit.
class Piece {
 public:
  explicit Piece(const Vocabulary& vocabulary) : vocabulary_(vocabulary), places_(vocabulary.stems()) {}

  bool is_empty() const { return groups_.empty(); }
  void clear() {
    groups_.clear();
    bytes_ = 0;
  }
  // With one more word, of these stems.
  std::size_t bytes_with(std::string_view word, std::span<const StemNumber> stems) const {
    std::size_t bytes = bytes_ + word.size();
    for (const StemNumber stem : stems) bytes += has(stem) ? 0 : bytes_of(stem);
    return bytes;
  }
  void add(std::string_view word, std::span<const StemNumber> stems) {
    for (const StemNumber stem : stems) {
      if (has(stem)) {
        groups_[places_[stem]].words.append(" ").append(word);
        continue;
      }
      places_[stem] = static_cast<std::uint32_t>(groups_.size());
      groups_.push_back({stem, std::string(word)});
      bytes_ += bytes_of(stem);
    }
    bytes_ += word.size();
  }

  std::string value(std::uint32_t sections) const {
    std::vector<olh_search::WordGroup> all;
    for (const Group& group : groups_) {
      const Stem& stem = vocabulary_.stem(group.stem);
      if (stem.postings.empty() && stem.titles.empty()) continue;
      all.push_back({group.words, olh_search::weight_of_word(sections, stem.sections), stem.postings, stem.titles});
    }
    std::ranges::sort(all, {}, &olh_search::WordGroup::words);  // neighbours share letters
    return in_quotes(olh_search::packed_groups(all));
  }

 private:
  struct Group {
    StemNumber stem;
    std::string words;
  };
  bool has(StemNumber stem) const { return places_[stem] < groups_.size() && groups_[places_[stem]].stem == stem; }
  std::size_t bytes_of(StemNumber number) const {
    return vocabulary_.stem(number).postings.size() + vocabulary_.stem(number).titles.size();
  }

  const Vocabulary& vocabulary_;
  std::vector<Group> groups_;
  std::vector<std::uint32_t> places_;  // of stems in groups_; of one that is not there whatever was last
  std::size_t bytes_ = 0;
};

// Hands pieces out, numbered.
class Pieces {
 public:
  Pieces(const Vocabulary& vocabulary, std::uint32_t sections, const WritePiece& write)
      : sections_(sections), write_(write), piece_(vocabulary) {}

  // Whether the word is the first of its piece.
  bool add(std::string_view word, std::span<const StemNumber> stems, std::size_t most_bytes) {
    if (piece_.bytes_with(word, stems) > most_bytes) hand_out();
    const bool is_first = piece_.is_empty();
    piece_.add(word, stems);
    return is_first;
  }
  void hand_out() {
    if (piece_.is_empty()) return;
    write_("words_" + std::to_string(handed_out_++), piece_.value(sections_));
    piece_.clear();
  }

 private:
  std::uint32_t sections_;
  const WritePiece& write_;
  Piece piece_;
  std::size_t handed_out_ = 0;
};

// The words of stems: what they mean first, each meaning with the stems behind it that have no other one before.
std::vector<std::pair<StemNumber, Words>> words_of_stems(const Vocabulary& vocabulary, const Words& words) {
  std::map<StemNumber, Words> of_meanings;
  std::map<StemNumber, Words> of_stems;
  for (const Vocabulary::Word& word : words)
    for (const StemNumber stem : word.stems)
      (vocabulary.stem(stem).is_meaning ? of_meanings : of_stems)[stem].push_back(word);
  std::vector<std::pair<StemNumber, Words>> all;
  for (auto& [meaning, its_words] : of_meanings) {
    all.emplace_back(meaning, its_words);
    for (const Vocabulary::Word& word : its_words)
      for (const StemNumber stem : word.stems)
        if (const auto own = of_stems.find(stem); own != of_stems.end()) {
          all.emplace_back(stem, std::move(own->second));
          of_stems.erase(own);
        }
  }
  return all;
}

// Each stem is in one piece, since what words have in common would be most of an index: a word may be in several.
nlohmann::json write_meant_words(const Vocabulary& vocabulary, const Words& words, Pieces& pieces) {
  std::vector<std::set<std::string_view>> rows;
  for (const auto& [stem, its_words] : words_of_stems(vocabulary, words)) {
    bool is_new = true;
    for (const Vocabulary::Word& word : its_words) {
      if (pieces.add(word.text, {&stem, 1}, is_new ? kBytesOfMeantPiece : std::string::npos)) rows.emplace_back();
      rows.back().insert(word.text);
      is_new = false;
    }
  }
  pieces.hand_out();
  nlohmann::json all = nlohmann::json::array();
  for (const std::set<std::string_view>& row : rows) {
    std::string text;
    for (const std::string_view word : row) text.append(text.empty() ? "" : " ").append(word);
    all.push_back(std::move(text));
  }
  return all;
}

// The most frequent first.
std::string near_words(const Vocabulary& vocabulary, const Words& words) {
  std::vector<std::pair<std::uint32_t, std::string_view>> near;
  for (const Vocabulary::Word& word : words) {
    std::uint32_t sections = 0;
    for (const StemNumber stem : word.stems) sections = std::max(sections, vocabulary.stem(stem).sections);
    if (word.text.size() >= kShortestNearWord && sections > 0) near.emplace_back(sections, word.text);
  }
  std::ranges::stable_sort(near, [](const auto& a, const auto& b) { return a.first > b.first; });
  near.resize(std::min(near.size(), kMostNearWords));
  std::string list;
  for (const auto& [sections, text] : near) list.append(list.empty() ? "" : " ").append(text);
  return list;
}

}  // namespace

nlohmann::json write_words(const Vocabulary& vocabulary, std::uint32_t sections, const WritePiece& write) {
  Words words = vocabulary.sorted_words();
  write("near", in_quotes(near_words(vocabulary, words)));
  const auto meant = std::stable_partition(words.begin(), words.end(), [&vocabulary](const Vocabulary::Word& word) {
    return std::ranges::none_of(word.stems,
                                [&vocabulary](StemNumber stem) { return vocabulary.stem(stem).is_meaning; });
  });
  Pieces pieces(vocabulary, sections, write);
  nlohmann::json head;
  head["meant_words"] = write_meant_words(vocabulary, {meant, words.end()}, pieces);
  head["first_words"] = nlohmann::json::array();
  words.erase(meant, words.end());
  for (const Vocabulary::Word& word : words)
    if (pieces.add(word.text, word.stems, kBytesOfPiece)) head["first_words"].push_back(std::string(word.text));
  pieces.hand_out();
  return head;
}

}  // namespace olh_index
