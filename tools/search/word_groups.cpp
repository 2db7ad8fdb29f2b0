#include "word_groups.h"

#include <algorithm>

#include "index_pieces.h"
#include "packed_numbers.h"

namespace olh_search {

namespace {

constexpr std::uint32_t kMostWeight = 1000;
constexpr std::size_t kLongestInPiece = 1000;  // in a piece that is one

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

std::vector<WordGroup> groups_in(std::string_view packed) {
  std::vector<WordGroup> groups;
  std::string word;
  while (!packed.empty()) {
    std::string_view row = take_to(packed, '~');
    WordGroup group;
    for (std::string_view words = take_to(row, '!'); !words.empty();) {
      const std::string_view coded = take_to(words, ' ');
      PackedNumbers shared(coded);
      word.resize(std::min<std::size_t>(shared.next_character(), word.size()));
      word.append(coded.substr(std::min<std::size_t>(1, coded.size()), kLongestInPiece));
      group.words.append(group.words.empty() ? "" : " ").append(word);
    }
    PackedNumbers numbers(take_to(row, '!'));
    group.weight = std::min(numbers.next(), kMostWeight);
    group.postings = numbers.rest();
    group.titles = row;
    groups.push_back(std::move(group));
  }
  return groups;
}

std::vector<WordGroup> words_in(std::string_view script) {
  const std::optional<nlohmann::json> value = value_in_script(script);
  return value && value->is_string() ? groups_in(value->get_ref<const std::string&>()) : std::vector<WordGroup>();
}

}  // namespace olh_search
