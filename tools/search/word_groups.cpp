#include "word_groups.h"

#include <algorithm>

#include "index_pieces.h"
#include "packed_numbers.h"

namespace olh_search {

namespace {

constexpr std::uint32_t kMostWeight = 1000;
constexpr std::size_t kLongestInPiece = 1000;  // in a piece that is one
constexpr std::size_t kMostGroups = 100;       // with a word: one for each language, and for each of its meanings
constexpr std::size_t kMostBytesOfWords = std::size_t{64} * 1024;  // of a group; a word may be written as two bytes

std::size_t shared_characters(std::string_view before, std::string_view word) {
  const std::size_t most = std::min({before.size(), word.size(), std::size_t{kMostInOneCharacter}});
  std::size_t count = 0;
  while (count < most && before[count] == word[count] && static_cast<unsigned char>(word[count]) < 0x80) ++count;
  return count;
}

// Takes what stands before a sign off the front, and the sign.
std::string_view take_to(std::string_view& text, char sign) {
  const std::string_view taken = text.substr(0, text.find(sign));
  text.remove_prefix(std::min(taken.size() + 1, text.size()));
  return taken;
}

}  // namespace

std::string packed_groups(const std::vector<WordGroup>& groups) {
  std::string packed;
  std::string_view before;
  for (const WordGroup& group : groups) {
    if (!packed.empty()) packed += '~';
    for (std::string_view words = group.words; !words.empty();) {
      const std::string_view word = take_to(words, ' ');
      const std::size_t shared = shared_characters(before, word);
      append_character(packed, static_cast<std::uint32_t>(shared));
      packed.append(word.substr(shared)).append(words.empty() ? "!" : " ");
      before = word;
    }
    append_number(packed, group.weight);
    packed += group.postings;
    if (!group.titles.empty()) packed.append("!").append(group.titles);
  }
  return packed;
}

std::vector<WordGroup> groups_with(std::string_view wanted, std::string_view packed, Wanted what) {
  std::vector<WordGroup> groups;
  std::string word;
  std::string all_words;
  while (!packed.empty() && groups.size() < kMostGroups) {
    std::string_view row = take_to(packed, '~');
    all_words.clear();
    bool is_found = false;
    for (std::string_view words = take_to(row, '!'); !words.empty();) {
      const std::string_view coded = take_to(words, ' ');
      PackedNumbers shared(coded);
      word.resize(std::min<std::size_t>(shared.next_character(), word.size()));
      word.append(coded.substr(std::min<std::size_t>(1, coded.size()), kLongestInPiece));
      is_found = is_found || word == wanted || (what == Wanted::kBeginning && word.starts_with(wanted));
      if (all_words.size() < kMostBytesOfWords) all_words.append(all_words.empty() ? "" : " ").append(word);
    }
    if (!is_found) continue;
    PackedNumbers numbers(take_to(row, '!'));
    const std::uint32_t weight = std::min(numbers.next(), kMostWeight);
    groups.push_back({all_words, weight, std::string(numbers.rest()), std::string(row)});
  }
  return groups;
}

std::string packed_groups_in(std::string_view script) { return text_in_script(script); }

}  // namespace olh_search
