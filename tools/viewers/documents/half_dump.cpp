#include "half_dump.h"

#include <cstddef>

#include "utf8_of.h"

namespace olh_viewers {

namespace {

constexpr std::size_t kDigitsInBasicPlane = 3, kDigitsInOtherPlanes = 5, kDigitsInLatin = 2;
constexpr unsigned kLatin1 = 'A', kLastCharacter = 0x10FFFF;  // a digit above that of the character names a small set

// How many digits follow this byte; 0 where it begins no character of Unicode or Latin-1.
std::size_t digits_after(unsigned char first) {
  switch (first) {
    case 0x82:
      return kDigitsInLatin;
    case 0x88:  // narrow
    case 0x89:  // wide
      return kDigitsInBasicPlane;
    case 0x8A:
    case 0x8B:
      return kDigitsInOtherPlanes;
    default:
      return 0;
  }
}

}  // namespace

std::string half_dump_as_utf8(std::string_view text) {
  std::string made;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t digits = digits_after(static_cast<unsigned char>(text[at]));
    unsigned long number = 0;
    for (const char digit : text.substr(at + 1, digits))
      number = number << 7U | (static_cast<unsigned char>(digit) & 0x7FU);
    if (digits == kDigitsInLatin) number = number >> 7U == kLatin1 ? 0x80 | (number & 0x7FU) : kLastCharacter + 1;
    const bool is_known = digits != 0 && number <= kLastCharacter && at + digits < text.size();
    made += is_known ? utf8_of(static_cast<unsigned>(number)) : std::string(1, text[at]);
    at += is_known ? digits + 1 : 1;
  }
  return made;
}

}  // namespace olh_viewers
