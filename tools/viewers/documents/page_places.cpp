#include "page_places.h"

#include <algorithm>
#include <array>
#include <functional>
#include <string>
#include <utility>

#include "words.h"

namespace olh_viewers {

namespace {

constexpr std::string_view kBlanks = " \t\r\n\f";
constexpr std::size_t kLongestAttribute = 8;

// The name of the attribute that ends before this place; "" where it is the text of something else.
std::string_view name_before(std::string_view page, std::size_t end) {
  const std::size_t last = page.substr(0, end).find_last_not_of(kBlanks);
  if (last == std::string_view::npos) return "";
  const std::size_t from = last < kLongestAttribute ? 0 : last - kLongestAttribute;
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

// As a browser reads it: the characters that generators of pages cannot write as they are.
std::string unescaped(std::string_view value) {
  constexpr std::array<std::pair<const char*, const char*>, 5> kEscapes = {
      {{"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&#39;", "'"}, {"&amp;", "&"}}};
  std::string text(value);
  if (text.find('&') == std::string::npos) return text;
  for (const auto& [escape, character] : kEscapes) replace_all(text, escape, character);
  return text;
}

// Calls `take` with each place and with where its value begins, until one is taken.
void visit_places(std::string_view page, const std::function<bool(std::string_view, std::size_t)>& take) {
  for (std::size_t at = page.find('='); at != std::string_view::npos; at = page.find('=', at + 1)) {
    const std::string_view name = name_before(page, at);
    const bool is_place = name == "id" || name == "name" || name == "ID" || name == "NAME";
    if (is_place && take(unescaped(value_at(page.substr(at + 1))), at + 1)) return;
  }
}

// The first text behind the tag that this place lies in.
std::size_t text_behind_tag(std::string_view page, std::size_t at) {
  for (bool is_tag = true; at < page.size(); ++at) {
    if (!is_tag && page[at] != '<' && kBlanks.find(page[at]) == std::string_view::npos) break;
    is_tag = page[at] != '>' && (is_tag || page[at] == '<');
  }
  return at;
}

}  // namespace

std::set<std::string> places_in_page(std::string_view page) {
  std::set<std::string> places;
  visit_places(page, [&places](std::string_view place, std::size_t) {
    places.emplace(place);
    return false;
  });
  return places;
}

std::optional<std::size_t> lines_before_place(std::string_view page, std::string_view place) {
  std::optional<std::size_t> lines;
  visit_places(page, [&](std::string_view found, std::size_t at) {
    if (found == place)
      lines = static_cast<std::size_t>(std::ranges::count(page.substr(0, text_behind_tag(page, at)), '\n'));
    return lines.has_value();
  });
  return lines;
}

}  // namespace olh_viewers
