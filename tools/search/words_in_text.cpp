#include "words_in_text.h"

#include <utf8proc.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

namespace olh_search {

namespace {

constexpr std::size_t kMostParts = 32;        // of a symbol
constexpr std::size_t kLongestCharacter = 4;  // in bytes
constexpr std::size_t kLongestWord = 64;      // in bytes; what is longer is no word that anybody types

enum class Kind { kOther, kWord, kPaired };

struct Character {
  Kind kind = Kind::kOther;
  std::size_t bytes = 1;
};

struct Range {
  utf8proc_int32_t first;
  utf8proc_int32_t last;
};
// Scripts without blanks between words.
constexpr Range kPaired[] = {{0x0e00, 0x0eff}, {0x1000, 0x109f}, {0x1780, 0x17ff}, {0x3005, 0x3007},
                             {0x3040, 0x30ff}, {0x31f0, 0x31ff}, {0x3400, 0x4dbf}, {0x4e00, 0x9fff},
                             {0xac00, 0xd7af}, {0xf900, 0xfaff}, {0xff66, 0xff9f}, {0x20000, 0x3ffff}};

bool is_small(char c) { return c >= 'a' && c <= 'z'; }
bool is_capital(char c) { return c >= 'A' && c <= 'Z'; }
bool is_digit(char c) { return c >= '0' && c <= '9'; }
bool is_ascii(char c) { return static_cast<unsigned char>(c) < 0x80; }

Character character_at(std::string_view text, std::size_t at) {
  const char c = text[at];
  if (is_ascii(c)) return {is_small(c) || is_capital(c) || is_digit(c) || c == '_' ? Kind::kWord : Kind::kOther, 1};
  utf8proc_int32_t point = 0;
  const auto* bytes = reinterpret_cast<const utf8proc_uint8_t*>(text.data()) + at;
  const auto size =
      utf8proc_iterate(bytes, static_cast<utf8proc_ssize_t>(std::min(text.size() - at, kLongestCharacter)), &point);
  if (size <= 0) return {};
  const auto length = static_cast<std::size_t>(size);
  for (const Range& range : kPaired)
    if (point >= range.first && point <= range.last) return {Kind::kPaired, length};
  const utf8proc_category_t category = utf8proc_category(point);
  const bool is_word =
      category >= UTF8PROC_CATEGORY_LU && category <= UTF8PROC_CATEGORY_NO;  // letters, marks, numbers
  return {is_word ? Kind::kWord : Kind::kOther, length};
}

// The bytes of a joiner between two parts of a symbol: "." and "-", and "::"; 0 for everything else.
std::size_t joiner_at(std::string_view text, std::size_t at) {
  if (text.substr(at, 2) == "::") return 2;
  return at < text.size() && (text[at] == '.' || text[at] == '-') ? 1 : 0;
}

bool is_word_at(std::string_view text, std::size_t at) {
  return at < text.size() && character_at(text, at).kind == Kind::kWord;
}

std::size_t end_of_word(std::string_view text, std::size_t at) {
  while (at < text.size()) {
    const Character next = character_at(text, at);
    if (next.kind != Kind::kWord) break;
    at += next.bytes;
  }
  return at;
}

void add_form(std::vector<std::string>& words, std::string word) {
  if (words.size() < kMostParts && !word.empty() && word.size() <= kLongestWord &&
      std::ranges::find(words, word) == words.end())
    words.push_back(std::move(word));
}

// Where a part of a symbol ends before the next capital: "Olh|Help|Call", "HTML|Page", but "PDFs".
bool is_border(std::string_view segment, std::size_t at) {
  if (!is_capital(segment[at])) return false;
  if (is_small(segment[at - 1])) return true;
  if (!is_capital(segment[at - 1]) || at + 1 >= segment.size() || !is_small(segment[at + 1])) return false;
  return segment.substr(at + 1) != "s";
}

void add_parts_of_segment(std::string_view segment, bool is_alone, Symbol& symbol) {
  std::size_t begin = 0;
  for (std::size_t at = 1; at < segment.size(); ++at) {
    if (!is_border(segment, at)) continue;
    add_form(symbol.parts, folded(segment.substr(begin, at - begin)));
    begin = at;
  }
  add_form(symbol.parts, folded(segment.substr(begin)));
  if (begin > 0 && !is_alone) add_form(symbol.wholes, folded(segment));
}

// The symbol that reaches from begin to end; its body goes without the dashes before and the signs behind.
void fill_symbol(std::string_view text, std::size_t begin, std::size_t body, std::size_t body_end, std::size_t end,
                 Symbol& symbol) {
  symbol.parts.clear();
  symbol.wholes.clear();
  add_form(symbol.wholes, folded(text.substr(begin, end - begin)));
  const auto is_joiner = [](char c) { return c == '.' || c == '-' || c == ':' || c == '_'; };
  for (std::size_t at = body; at < body_end;) {
    const std::size_t from = at;
    while (at < body_end && !is_joiner(text[at])) ++at;
    if (at > from) add_parts_of_segment(text.substr(from, at - from), from == begin && at == end, symbol);
    ++at;
  }
  if (symbol.parts.size() == 1 && symbol.wholes == symbol.parts) symbol.wholes.clear();
}

std::size_t start_of_dashes(std::string_view text, std::size_t body) {
  std::size_t begin = body;
  while (begin > 0 && body - begin < 2 && text[begin - 1] == '-') --begin;
  const bool is_option = begin < body && (is_small(text[body]) || is_capital(text[body]));
  return is_option &&
                 (begin == 0 || (is_ascii(text[begin - 1]) && !is_word_at(text, begin - 1) && text[begin - 1] != '-'))
             ? begin
             : body;
}

std::size_t end_of_signs(std::string_view text, std::size_t at) {
  const std::string_view rest = text.substr(at);
  const std::size_t signs = rest.starts_with("++") ? 2 : rest.starts_with("#") ? 1 : 0;
  return is_word_at(text, at + signs) ? at : at + signs;
}

using Call = std::function<void(const Symbol&)>;

// The functions that take a symbol or pairs off a text return where they end. They fill the same `symbol` for all words, so
// that most words cost no memory.
std::size_t take_symbol(std::string_view text, std::size_t body, Symbol& symbol, const Call& call) {
  std::size_t end = end_of_word(text, body);
  for (std::size_t joiner = joiner_at(text, end); joiner > 0 && is_word_at(text, end + joiner);
       joiner = joiner_at(text, end))
    end = end_of_word(text, end + joiner);
  const std::size_t whole_end = end_of_signs(text, end);
  fill_symbol(text, start_of_dashes(text, body), body, end, whole_end, symbol);
  call(symbol);
  return whole_end;
}

std::size_t take_pairs(std::string_view text, std::size_t begin, Symbol& symbol, const Call& call) {
  symbol.wholes.clear();
  std::size_t first = begin;
  std::size_t second = begin + character_at(text, begin).bytes;
  for (;;) {
    const bool has_second = second < text.size() && character_at(text, second).kind == Kind::kPaired;
    if (!has_second && first != begin) return second;
    const std::size_t end = has_second ? second + character_at(text, second).bytes : second;
    symbol.parts.clear();
    add_form(symbol.parts, folded(text.substr(first, end - first)));  // signs that only change others leave nothing
    if (!symbol.parts.empty()) call(symbol);
    if (!has_second) return second;
    first = second;
    second = end;
  }
}

std::string folded_unicode(std::string_view text) {
  constexpr auto kOptions = static_cast<utf8proc_option_t>(UTF8PROC_COMPAT | UTF8PROC_DECOMPOSE | UTF8PROC_CASEFOLD |
                                                           UTF8PROC_STRIPMARK | UTF8PROC_IGNORE);
  utf8proc_uint8_t* made = nullptr;
  const auto size = utf8proc_map(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                 static_cast<utf8proc_ssize_t>(text.size()), &made, kOptions);
  const std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> owner(made, std::free);
  return size < 0 ? "" : std::string(reinterpret_cast<const char*>(made), static_cast<std::size_t>(size));
}

}  // namespace

std::string folded(std::string_view text) {
  if (!std::ranges::all_of(text, is_ascii)) return folded_unicode(text);
  std::string low(text);
  for (char& c : low)
    if (is_capital(c)) c = static_cast<char>(c + ('a' - 'A'));
  return low;
}

std::string_view cut_to(std::string_view text, std::size_t most) {
  if (text.size() <= most) return text;
  std::size_t end = most;
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xc0) == 0x80) --end;
  return text.substr(0, end + kLongestCharacter > most ? end : most);  // what is no text is cut anywhere
}

void each_word(std::string_view text, const Call& call) {
  Symbol symbol;
  for (std::size_t at = 0; at < text.size();) {
    const Character next = character_at(text, at);
    if (next.kind == Kind::kWord)
      at = take_symbol(text, at, symbol, call);
    else if (next.kind == Kind::kPaired)
      at = take_pairs(text, at, symbol, call);
    else
      at += next.bytes;
  }
}

}  // namespace olh_search
