#include "near_words.h"

#include <algorithm>
#include <array>

namespace olh_search {

namespace {

constexpr std::size_t kLongest = 40;
constexpr int kFar = 9;

using Characters = std::u32string;

Characters characters_of(const std::string& text) {
  Characters characters;
  for (std::size_t at = 0; at < text.size() && characters.size() <= kLongest; ++at) {
    const auto byte = static_cast<unsigned char>(text[at]);
    if ((byte & 0xc0) == 0x80 && !characters.empty())
      characters.back() = (characters.back() << 6) | (byte & 0x3f);
    else
      characters += byte;
  }
  return characters;
}

// Letters that are missing, too many, other or exchanged with the next one.
int distance(const Characters& a, const Characters& b) {
  std::array<std::array<int, kLongest + 2>, 3> rows{};
  for (std::size_t j = 0; j <= b.size(); ++j) rows[0][j] = static_cast<int>(j);
  for (std::size_t i = 1; i <= a.size(); ++i) {
    auto& row = rows[i % 3];
    const auto& above = rows[(i + 2) % 3];
    row[0] = static_cast<int>(i);
    for (std::size_t j = 1; j <= b.size(); ++j) {
      row[j] = std::min({above[j] + 1, row[j - 1] + 1, above[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1)});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
        row[j] = std::min(row[j], rows[(i + 1) % 3][j - 2] + 1);
    }
  }
  return rows[a.size() % 3][b.size()];
}

// 0 completes the word, 1 is one letter off, 2 has another ending, 3 is two letters off.
int how_far(const Characters& word, const Characters& other) {
  if (other.starts_with(word)) return 0;
  const std::size_t longer = std::max(word.size(), other.size());
  const std::size_t shorter = std::min(word.size(), other.size());
  const int letters = shorter + 2 >= longer && word.size() >= 4 ? distance(word, other) : kFar;
  if (letters == 1) return 1;
  const auto same = static_cast<std::size_t>(std::ranges::mismatch(word, other).in1 - word.begin());
  if (same >= 4 && same + 3 >= longer) return 2;
  return letters == 2 && word.size() >= 6 ? 3 : kFar;
}

}  // namespace

std::vector<std::string> near_words(const std::string& word, const std::vector<std::string>& words,
                                    std::size_t most) {
  const Characters wanted = characters_of(word);
  std::array<std::vector<std::string>, 4> found;
  if (wanted.size() < 2 || wanted.size() > kLongest) return {};
  for (const std::string& other : words) {
    const Characters characters = characters_of(other);
    if (characters.size() > kLongest) continue;
    const int far = how_far(wanted, characters);
    if (far < kFar && found[static_cast<std::size_t>(far)].size() < most)
      found[static_cast<std::size_t>(far)].push_back(other);
  }
  std::vector<std::string> best;
  for (const auto& some : found) best.insert(best.end(), some.begin(), some.end());
  best.resize(std::min(best.size(), most));
  return best;
}

}  // namespace olh_search
