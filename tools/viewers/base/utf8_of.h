// A character as UTF-8.
//
// For      half_dump; olh-import.
#ifndef OLH_TOOLS_VIEWERS_UTF8_OF_H
#define OLH_TOOLS_VIEWERS_UTF8_OF_H

#include <string>

namespace olh_viewers {

// A character by its number.
inline std::string utf8_of(unsigned number) {
  const auto byte = [](unsigned first, unsigned bits) { return static_cast<char>(first | bits); };
  const char last = byte(0x80, number & 0x3F);
  if (number < 0x80) return {byte(0, number)};
  if (number < 0x800) return {byte(0xC0, number >> 6), last};
  const char third = byte(0x80, number >> 6 & 0x3F);
  if (number < 0x10000) return {byte(0xE0, number >> 12), third, last};
  return {byte(0xF0, number >> 18 & 0x7), byte(0x80, number >> 12 & 0x3F), third, last};
}

}  // namespace olh_viewers

#endif
