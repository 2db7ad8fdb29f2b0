// Numbers for texts, in the order in which they first come: the words of a root are millions, of some hundred thousand.
//
// Knows    how a text is found fast: a table with open addressing, and all texts one after the other in few blocks.
// For      vocabulary.
#ifndef OLH_TOOLS_INDEX_TEXT_NUMBERS_H
#define OLH_TOOLS_INDEX_TEXT_NUMBERS_H

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace olh_index {

class TextNumbers {
 public:
  TextNumbers();

  // The number of a text; a new one when it was never asked for.
  std::uint32_t number_of(std::string_view text);
  std::uint32_t size() const { return static_cast<std::uint32_t>(texts_.size()); }
  std::string_view text(std::uint32_t number) const { return texts_[number]; }

 private:
  // A text of at most eight bytes, as most are, is found without a look at the texts.
  struct Place {
    std::uint64_t bytes = 0;   // the first eight
    std::uint32_t sum = 0;     // its last byte is the size, 255 for all that are longer
    std::uint32_t number = 0;  // one more than that; 0 for a place that is free
  };
  bool holds(const Place& place, std::string_view text) const {
    return text.size() <= sizeof place.bytes || texts_[place.number - 1] == text;
  }
  void double_places();
  std::string_view kept(std::string_view text);

  std::vector<Place> places_;  // a power of two, at most half of them taken
  std::vector<std::string_view> texts_;
  std::vector<std::unique_ptr<char[]>> blocks_;
  char* end_of_block_ = nullptr;  // of the last one
  std::size_t free_in_block_ = 0;
};

}  // namespace olh_index

#endif
