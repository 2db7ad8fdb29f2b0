#include "carried_text.h"

#include <algorithm>

#include "bounds.h"
#include "markup.h"
#include "url.h"
#include "utf8.h"

namespace olh_import {

namespace {

struct Look {
  char character;
  const char* alike;
};
constexpr Look kAlikeInScript[] = {{'"', "\u201d"}, {'\\', "\u2216"}};
constexpr Look kAlike[] = {{'"', "\u201d"}, {'\\', "\u2216"}, {'<', "\u2039"}, {'>', "\u203a"}, {'&', "\uff06"}};
constexpr Look kMarkup[] = {{'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}, {'"', "&quot;"}};

std::string replaced(std::string_view text, const auto& looks) {
  std::string made;
  for (const char c : text) {
    const auto* const found = std::ranges::find(looks, c, &Look::character);
    found == std::end(looks) ? made.push_back(c) : static_cast<void>(made += found->alike);
  }
  return made;
}

// Control characters of both ranges, and those that turn the direction of a line or end it.
bool is_control(std::string_view character) {
  if (character.size() == 1) return static_cast<unsigned char>(character[0]) < ' ' || character[0] == 127;
  return (character >= "\u0080" && character <= "\u009f") || (character >= "\u2028" && character <= "\u202e") ||
         (character >= "\u2066" && character <= "\u2069");
}

// A ".." would be taken for a way upwards, wherever it is.
std::string encoded(std::string_view text) {
  std::string made = olh_viewers::percent_encoded(text);
  for (std::size_t at = made.find(".."); at != std::string::npos; at = made.find("..", at))
    made.replace(at + 1, 1, "%2E");
  return made;
}

}  // namespace

std::string clean_text(std::string_view text, std::size_t most) {
  std::string clean;
  while (!text.empty()) {
    const std::size_t size = bytes_of_first_character(text);
    const std::string_view character = size == 0 ? "\ufffd" : text.substr(0, size);
    const std::string_view shown = is_control(character) ? " " : character;
    if (clean.size() + shown.size() > most) break;
    clean += shown;
    text.remove_prefix(std::max(size, std::size_t{1}));
  }
  return clean;
}

std::string carried_title(std::string_view title) {
  return replaced(folded_space(clean_text(title, kLongestTitle)), kAlike);
}

std::string carried_topic_title(std::string_view title) {
  return replaced(folded_space(clean_text(title, kLongestTitle)), kAlikeInScript);
}

std::string as_markup(std::string_view text) { return replaced(clean_text(text, text.size() * 3), kMarkup); }

std::string address_of(std::string_view page, std::string_view place) {
  std::string address = "pages";
  while (!page.empty()) {
    const std::string_view part = page.substr(0, page.find('/'));
    address += "/" + encoded(part);
    page.remove_prefix(std::min(part.size() + 1, page.size()));
  }
  return place.empty() ? address : address + "#" + encoded(place);
}

}  // namespace olh_import
