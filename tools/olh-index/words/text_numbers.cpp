#include "text_numbers.h"

#include <algorithm>
#include <cstring>

namespace olh_index {

namespace {

constexpr std::size_t kPlacesAtFirst = std::size_t{1} << 16;
constexpr std::size_t kBytesOfBlock = std::size_t{256} * 1024;
constexpr std::size_t kLongestKnownSize = 255;

template <typename Number>
std::uint64_t number_at(const char* text) {
  Number number = 0;
  std::memcpy(&number, text, sizeof number);
  return number;
}

std::uint64_t mixed(std::uint64_t sum, std::uint64_t number) {
  sum = (sum ^ number) * 0x9e3779b97f4a7c15U;
  return sum ^ sum >> 32;
}

// The first eight bytes, or all, as a number; no two texts of one length have the same.
std::uint64_t first_bytes(std::string_view text) {
  const std::size_t size = text.size();
  const char* const end = text.data() + size;
  if (size >= 8) return number_at<std::uint64_t>(text.data());
  if (size >= 4) return number_at<std::uint32_t>(text.data()) << 32 | number_at<std::uint32_t>(end - 4);
  if (size == 0) return 0;
  return number_at<std::uint8_t>(text.data()) << 16 | number_at<std::uint8_t>(text.data() + size / 2) << 8 |
         number_at<std::uint8_t>(end - 1);
}

// The last bytes are taken with some before them, so that no text needs a loop over single ones.
std::uint32_t sum_of(std::string_view text, std::uint64_t first) {
  std::uint64_t sum = mixed(text.size() << 56, first);
  if (text.size() > 8) {
    const char* const end = text.data() + text.size();
    for (const char* at = text.data() + 8; at < end - 8; at += 8) sum = mixed(sum, number_at<std::uint64_t>(at));
    sum = mixed(sum, number_at<std::uint64_t>(end - 8));
  }
  const std::size_t size = std::min<std::size_t>(text.size(), kLongestKnownSize);
  return static_cast<std::uint32_t>(sum << 8 | size);
}

// Where a text is looked for first; the size says least of it.
std::size_t first_place(std::uint32_t sum, std::size_t mask) { return (sum >> 8 | sum << 24) & mask; }

}  // namespace

TextNumbers::TextNumbers() : places_(kPlacesAtFirst) {}

std::uint32_t TextNumbers::number_of(std::string_view text) {
  const std::uint64_t bytes = first_bytes(text);
  const std::uint32_t sum = sum_of(text, bytes);
  const std::size_t mask = places_.size() - 1;
  std::size_t at = first_place(sum, mask);
  for (; places_[at].number != 0; at = (at + 1) & mask) {
    const Place& place = places_[at];
    if (place.bytes == bytes && place.sum == sum && holds(place, text)) return place.number - 1;
  }
  texts_.push_back(kept(text));
  places_[at] = {bytes, sum, size()};
  if (2 * texts_.size() > places_.size()) double_places();
  return size() - 1;
}

void TextNumbers::double_places() {
  std::vector<Place> places(2 * places_.size());
  const std::size_t mask = places.size() - 1;
  for (const Place& place : places_) {
    if (place.number == 0) continue;
    std::size_t at = first_place(place.sum, mask);
    while (places[at].number != 0) at = (at + 1) & mask;
    places[at] = place;
  }
  places_ = std::move(places);
}

std::string_view TextNumbers::kept(std::string_view text) {
  if (blocks_.empty() || free_in_block_ < text.size()) {
    free_in_block_ = std::max(kBytesOfBlock, text.size());
    blocks_.push_back(std::make_unique<char[]>(free_in_block_));
    end_of_block_ = blocks_.back().get() + free_in_block_;
  }
  char* const place = end_of_block_ - free_in_block_;
  std::ranges::copy(text, place);
  free_in_block_ -= text.size();
  return {place, text.size()};
}

}  // namespace olh_index
