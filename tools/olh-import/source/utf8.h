// UTF-8 as texts of strangers need it.
//
// For      every file of this room that takes or writes text.
#ifndef OLH_IMPORT_UTF8_H
#define OLH_IMPORT_UTF8_H

#include <cstddef>
#include <string_view>

#include "utf8_of.h"

namespace olh_import {

// How many bytes the character has that the text begins with; 0 when it begins with none.
inline std::size_t bytes_of_first_character(std::string_view text) {
  const auto byte = [&text](std::size_t at) { return static_cast<unsigned char>(text[at]); };
  const auto follows = [&](std::size_t at, unsigned low, unsigned high) {
    return text.size() > at && byte(at) >= low && byte(at) <= high;
  };
  if (text.empty()) return 0;
  const unsigned first = byte(0);
  if (first < 0x80) return 1;
  if (first < 0xC2 || first > 0xF4) return 0;
  const unsigned low = first == 0xE0 ? 0xA0 : first == 0xF0 ? 0x90 : 0x80;
  const unsigned high = first == 0xED ? 0x9F : first == 0xF4 ? 0x8F : 0xBF;
  const std::size_t size = first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
  if (!follows(1, low, high)) return 0;
  for (std::size_t at = 2; at < size; ++at)
    if (!follows(at, 0x80, 0xBF)) return 0;
  return size;
}

inline bool is_whole_utf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t size = bytes_of_first_character(text);
    if (size == 0) return false;
    text.remove_prefix(size);
  }
  return true;
}

using olh_viewers::utf8_of;

}  // namespace olh_import

#endif
