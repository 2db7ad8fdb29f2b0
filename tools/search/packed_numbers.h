// Lists of numbers as text that stands in a script: the postings of the index.
//
// Knows    90 printable characters without quote and backslash: a number is digits of base 45, the smallest first; all
//          but the last are 45 more.
// For      olh-index, and index_search; the pages have the same in QEL/lib/find.js.
#ifndef OLH_TOOLS_SEARCH_PACKED_NUMBERS_H
#define OLH_TOOLS_SEARCH_PACKED_NUMBERS_H

#include <cstdint>
#include <string>
#include <string_view>

namespace olh_search {

inline constexpr std::uint32_t kMostInOneCharacter = 89;

void append_number(std::string& packed, std::uint32_t number);
// A number up to 89 as one character.
void append_character(std::string& packed, std::uint32_t number);

// Takes numbers off the front of a packed text. Whatever the text holds, it ends.
class PackedNumbers {
 public:
  explicit PackedNumbers(std::string_view packed) : rest_(packed) {}
  bool at_end() const { return rest_.empty(); }
  std::uint32_t next();
  std::uint32_t next_character();
  std::string_view rest() const { return rest_; }

 private:
  std::string_view rest_;
};

}  // namespace olh_search

#endif
