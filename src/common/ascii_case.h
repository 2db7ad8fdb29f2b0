// Upper and lower case, as the library compares by it.
//
// Knows    that A to Z and a to z alone have two cases, whatever the host's locale says: in Turkish the small form of "I" is
//          another letter.
// Not      how a host's own text is lowered (the exported downcase goes by the locale).
// For      whoever compares topics, words or endings in any mix of case.
#ifndef OLH_COMMON_ASCII_CASE_H
#define OLH_COMMON_ASCII_CASE_H

#include <string_view>

namespace olh {

constexpr char ascii_lowered(char c) noexcept { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

// In place, up to the NUL.
inline void lower_ascii(char* text) noexcept {
  for (; *text != '\0'; ++text) *text = ascii_lowered(*text);
}

// Whether a text ends in `ending`, which is in lower case, in any mix of case.
constexpr bool ends_in_any_case(std::string_view text, std::string_view ending) noexcept {
  if (text.size() < ending.size()) return false;
  text.remove_prefix(text.size() - ending.size());
  for (std::size_t i = 0; i < ending.size(); ++i)
    if (ascii_lowered(text[i]) != ending[i]) return false;
  return true;
}

}  // namespace olh

#endif
