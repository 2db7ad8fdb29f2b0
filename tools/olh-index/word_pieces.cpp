#include "word_pieces.h"

#include <algorithm>
#include <map>

#include "points.h"

namespace olh_index {

namespace {

constexpr std::size_t kBytesOfPiece = std::size_t{40} * 1024;
constexpr std::size_t kMostNearWords = 30000;
constexpr std::size_t kShortestNearWord = 4;

using Words = std::vector<Vocabulary::Word>;

// Groups of one stem, as long as they fit. A stem whose words are in two pieces is in both.
class Piece {
 public:
  explicit Piece(const Vocabulary& vocabulary) : vocabulary_(&vocabulary) {}

  bool is_empty() const { return groups_.empty(); }
  bool is_too_large_with(const Vocabulary::Word& word) const {
    std::size_t more = word.text.size();
    for (const StemNumber stem : word.stems) more += groups_.contains(stem) ? 0 : bytes_of(stem);
    return bytes_ + more > kBytesOfPiece;
  }

  void add(const Vocabulary::Word& word) {
    for (const StemNumber stem : word.stems) {
      std::string& texts = groups_[stem];
      bytes_ += texts.empty() ? bytes_of(stem) : 0;
      texts += (texts.empty() ? "" : " ") + word.text;
    }
    bytes_ += word.text.size();
  }

  nlohmann::json value(std::uint32_t sections) const {
    nlohmann::json all = nlohmann::json::array();
    for (const auto& [number, texts] : groups_) {
      const Stem& stem = vocabulary_->stem(number);
      if (stem.postings.empty() && stem.titles.empty()) continue;
      all.push_back({texts, olh_search::weight_of_word(sections, stem.sections), stem.postings, stem.titles});
    }
    return all;
  }

 private:
  std::size_t bytes_of(StemNumber number) const {
    return vocabulary_->stem(number).postings.size() + vocabulary_->stem(number).titles.size();
  }

  const Vocabulary* vocabulary_;
  std::map<StemNumber, std::string> groups_;
  std::size_t bytes_ = 0;
};

// The most frequent first.
std::string near_words(const Vocabulary& vocabulary, const Words& words) {
  std::vector<std::pair<std::uint32_t, const std::string*>> near;
  for (const Vocabulary::Word& word : words) {
    std::uint32_t sections = 0;
    for (const StemNumber stem : word.stems) sections = std::max(sections, vocabulary.stem(stem).sections);
    if (word.text.size() >= kShortestNearWord && sections > 0) near.emplace_back(sections, &word.text);
  }
  std::ranges::stable_sort(near, [](const auto& a, const auto& b) { return a.first > b.first; });
  near.resize(std::min(near.size(), kMostNearWords));
  std::string list;
  for (const auto& [sections, text] : near) list += (list.empty() ? "" : " ") + *text;
  return list;
}

}  // namespace

nlohmann::json write_words(const Vocabulary& vocabulary, std::uint32_t sections, const WritePiece& write) {
  const Words words = vocabulary.sorted_words();
  nlohmann::json first_words = nlohmann::json::array();
  Piece piece(vocabulary);
  const auto hand_out = [&] {
    if (!piece.is_empty()) write("words_" + std::to_string(first_words.size() - 1), piece.value(sections));
  };
  for (const Vocabulary::Word& word : words) {
    if (piece.is_empty() || piece.is_too_large_with(word)) {
      hand_out();
      piece = Piece(vocabulary);
      first_words.push_back(word.text);
    }
    piece.add(word);
  }
  hand_out();
  write("near", near_words(vocabulary, words));
  return first_words;
}

}  // namespace olh_index
