#include "page_places.h"

#include <algorithm>

namespace olh {

namespace {

constexpr std::string_view kBlanks = " \t\r\n\f";
constexpr std::size_t kLongestName = 8;

// The name of the attribute that ends before this place; "" where it is the text of something else.
std::string_view name_before(std::string_view page, std::size_t end) {
  const std::size_t last = page.substr(0, end).find_last_not_of(kBlanks);
  if (last == std::string_view::npos) return "";
  const std::size_t from = last < kLongestName ? 0 : last - kLongestName;
  const std::string_view text = page.substr(from, last - from + 1);
  const std::size_t blank = text.find_last_of(kBlanks);
  return blank == std::string_view::npos ? "" : text.substr(blank + 1);
}

// The value that begins here: between quotes, or up to a blank or the end of the tag.
std::string_view value_at(std::string_view rest) {
  rest.remove_prefix(std::min(rest.find_first_not_of(kBlanks), rest.size()));
  if (rest.empty() || (rest[0] != '"' && rest[0] != '\'')) return rest.substr(0, rest.find_first_of(" \t\r\n\f>"));
  return rest.substr(1, rest.find(rest[0], 1) - 1);
}

}  // namespace

std::set<std::string> places_in_page(std::string_view page) {
  std::set<std::string> places;
  for (std::size_t at = page.find('='); at != std::string_view::npos; at = page.find('=', at + 1)) {
    const std::string_view name = name_before(page, at);
    if (name == "id" || name == "name" || name == "ID" || name == "NAME")
      places.emplace(value_at(page.substr(at + 1)));
  }
  return places;
}

}  // namespace olh
