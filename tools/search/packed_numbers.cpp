#include "packed_numbers.h"

namespace olh_search {

namespace {

constexpr std::uint32_t kBase = 45;

}  // namespace

// From "#" to "}", without the backslash.
void append_character(std::string& packed, std::uint32_t number) {
  const auto c = static_cast<char>('#' + number);
  packed += c >= '\\' ? static_cast<char>(c + 1) : c;
}

void append_number(std::string& packed, std::uint32_t number) {
  for (; number >= kBase; number /= kBase) append_character(packed, kBase + number % kBase);
  append_character(packed, number);
}

std::uint32_t PackedNumbers::next_character() {
  if (rest_.empty()) return 0;
  const char c = rest_.front();
  rest_.remove_prefix(1);
  const int number = c - '#' - (c > '\\' ? 1 : 0);
  return number < 0 || number > static_cast<int>(kMostInOneCharacter) ? 0 : static_cast<std::uint32_t>(number);
}

std::uint32_t PackedNumbers::next() {
  std::uint32_t number = 0;
  std::uint32_t place = 1;
  for (int digits = 0; digits < 6; ++digits, place *= kBase) {
    const std::uint32_t digit = next_character();
    number += place * (digit % kBase);
    if (digit < kBase) break;
  }
  return number;
}

}  // namespace olh_search
