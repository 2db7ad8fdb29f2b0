#include "word_pieces.h"

#include <algorithm>

#include "json_texts.h"
#include "points.h"
#include "word_groups.h"

namespace olh_index {

namespace {

constexpr std::size_t kBytesOfPiece = std::size_t{40} * 1024;
constexpr std::size_t kBytesOfMeantPiece = std::size_t{64} * 1024;  // larger ones repeat less
constexpr std::size_t kMostNearWords = 30000;
constexpr std::size_t kShortestNearWord = 4;

using Words = std::vector<Vocabulary::Word>;

std::string in_quotes(std::string_view text) {
  std::string json;
  olh_search::append_json(json, text);
  return json;
}

// Groups of one stem, as long as they fit. A stem whose words are in two pieces is in both.
class Piece {
 public:
  explicit Piece(const Vocabulary& vocabulary) : vocabulary_(vocabulary), places_(vocabulary.stems()) {}

  bool is_empty() const { return groups_.empty(); }
  void clear() {
    groups_.clear();
    bytes_ = 0;
  }
  std::size_t bytes_with(const Vocabulary::Word& word) const {
    std::size_t bytes = bytes_ + word.text.size();
    for (const StemNumber stem : *word.stems) bytes += has(stem) ? 0 : bytes_of(stem);
    return bytes;
  }
  // How much of what a word needs is here already.
  std::size_t bytes_shared_with(const Vocabulary::Word& word) const {
    std::size_t shared = 0;
    for (const StemNumber stem : *word.stems) shared += has(stem) ? bytes_of(stem) : 0;
    return shared;
  }

  void add(const Vocabulary::Word& word) {
    for (const StemNumber stem : *word.stems) {
      if (has(stem)) {
        groups_[places_[stem]].words.append(" ").append(word.text);
        continue;
      }
      places_[stem] = static_cast<std::uint32_t>(groups_.size());
      groups_.push_back({stem, std::string(word.text)});
      bytes_ += bytes_of(stem);
    }
    bytes_ += word.text.size();
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

  const Piece& piece() const { return piece_; }
  // Whether the word is the first of its piece.
  bool add(const Vocabulary::Word& word, std::size_t most_bytes) {
    if (piece_.bytes_with(word) > most_bytes) hand_out();
    const bool is_first = piece_.is_empty();
    piece_.add(word);
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

// Words that mean the same stand together, so that what they share is in few pieces: next comes always the word that
// shares most with the piece.
nlohmann::json write_meant_words(Words words, Pieces& pieces) {
  nlohmann::json rows = nlohmann::json::array();
  while (!words.empty()) {
    const auto next = std::ranges::max_element(
        words, {}, [&pieces](const Vocabulary::Word& word) { return pieces.piece().bytes_shared_with(word); });
    if (pieces.add(*next, kBytesOfMeantPiece))
      rows.push_back(std::string(next->text));
    else
      rows.back().get_ref<std::string&>().append(" ").append(next->text);
    words.erase(next);
  }
  pieces.hand_out();
  return rows;
}

// The most frequent first.
std::string near_words(const Vocabulary& vocabulary, const Words& words) {
  std::vector<std::pair<std::uint32_t, std::string_view>> near;
  for (const Vocabulary::Word& word : words) {
    std::uint32_t sections = 0;
    for (const StemNumber stem : *word.stems) sections = std::max(sections, vocabulary.stem(stem).sections);
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
  const auto meant = std::ranges::stable_partition(words, [&vocabulary](const Vocabulary::Word& word) {
    return std::ranges::none_of(*word.stems,
                                [&vocabulary](StemNumber stem) { return vocabulary.stem(stem).is_meaning; });
  });
  Pieces pieces(vocabulary, sections, write);
  nlohmann::json head;
  head["meant_words"] = write_meant_words({meant.begin(), meant.end()}, pieces);
  head["first_words"] = nlohmann::json::array();
  words.erase(meant.begin(), meant.end());
  for (const Vocabulary::Word& word : words)
    if (pieces.add(word, kBytesOfPiece)) head["first_words"].push_back(std::string(word.text));
  pieces.hand_out();
  return head;
}

}  // namespace olh_index
