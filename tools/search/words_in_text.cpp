#include "words_in_text.h"

#include <utf8proc.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

namespace olh_search {

namespace {

constexpr std::size_t kLongestCharacter = 4;  // in bytes

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

constexpr bool is_small(char c) { return c >= 'a' && c <= 'z'; }
constexpr bool is_capital(char c) { return c >= 'A' && c <= 'Z'; }
constexpr bool is_digit(char c) { return c >= '0' && c <= '9'; }
constexpr bool is_ascii(char c) { return static_cast<unsigned char>(c) < 0x80; }

bool is_ascii_word(char c) {
  static constexpr auto kAre = [] {
    std::array<bool, 256> are{};
    for (char one = '0'; one <= 'z'; ++one)
      are[static_cast<unsigned char>(one)] = is_small(one) || is_capital(one) || is_digit(one) || one == '_';
    return are;
  }();
  return kAre[static_cast<unsigned char>(c)];
}

Character character_at(std::string_view text, std::size_t at) {
  const char c = text[at];
  if (is_ascii(c)) return {is_ascii_word(c) ? Kind::kWord : Kind::kOther, 1};
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
  if (at >= text.size()) return 0;
  if (text[at] == '.' || text[at] == '-') return 1;
  return text[at] == ':' && at + 1 < text.size() && text[at + 1] == ':' ? 2 : 0;
}

bool is_word_at(std::string_view text, std::size_t at) {
  return at < text.size() && character_at(text, at).kind == Kind::kWord;
}

std::size_t end_of_word(std::string_view text, std::size_t at) {
  for (;;) {
    while (at < text.size() && is_ascii_word(text[at])) ++at;
    if (at == text.size() || is_ascii(text[at])) break;
    const Character next = character_at(text, at);
    if (next.kind != Kind::kWord) break;
    at += next.bytes;
  }
  return at;
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
    symbol.parts.add(folded(segment.substr(begin, at - begin)));
    begin = at;
  }
  symbol.parts.add(folded(segment.substr(begin)));
  if (begin > 0 && !is_alone) symbol.wholes.add(folded(segment));
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
  if (at == text.size() || (text[at] != '+' && text[at] != '#')) return at;
  const std::string_view rest = text.substr(at);
  const std::size_t signs = rest.starts_with("++") ? 2 : rest.starts_with("#") ? 1 : 0;
  return is_word_at(text, at + signs) ? at : at + signs;
}

// The functions that take a token off a text return where they end.
std::size_t take_symbol(std::string_view text, std::size_t body, const TakeToken& take) {
  std::size_t end = end_of_word(text, body);
  for (std::size_t joiner = joiner_at(text, end); joiner > 0 && is_word_at(text, end + joiner);
       joiner = joiner_at(text, end))
    end = end_of_word(text, end + joiner);
  const std::size_t begin = start_of_dashes(text, body);
  const std::size_t whole_end = end_of_signs(text, end);
  take(text.substr(begin, whole_end - begin));
  return whole_end;
}

std::size_t take_pairs(std::string_view text, std::size_t begin, const TakeToken& take) {
  std::size_t first = begin;
  std::size_t second = begin + character_at(text, begin).bytes;
  for (;;) {
    const bool has_second = second < text.size() && character_at(text, second).kind == Kind::kPaired;
    if (!has_second && first != begin) return second;
    const std::size_t end = has_second ? second + character_at(text, second).bytes : second;
    take(text.substr(first, end - first));
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

void SymbolWords::add(std::string_view word) {
  if (words_.size() == kMost || word.empty() || word.size() > kLongest ||
      std::ranges::find(words_, word) != words_.end())
    return;
  char* const letters = letters_.data() + words_.size() * kLongest;
  std::ranges::copy(word, letters);
  words_.emplace_back(letters, word.size());
}

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

void each_token(std::string_view text, const TakeToken& take) {
  for (std::size_t at = 0;;) {
    while (at < text.size() && is_ascii(text[at]) && !is_ascii_word(text[at])) ++at;
    if (at == text.size()) return;
    const Character next = character_at(text, at);
    if (next.kind == Kind::kWord)
      at = take_symbol(text, at, take);
    else if (next.kind == Kind::kPaired)
      at = take_pairs(text, at, take);
    else
      at += next.bytes;
  }
}

// The body of a symbol goes without the dashes before and the signs behind.
void read_symbol(std::string_view token, Symbol& symbol) {
  symbol.parts.clear();
  symbol.wholes.clear();
  const std::size_t body = std::min(token.find_first_not_of('-'), token.size());
  if (body == token.size()) return;
  if (character_at(token, body).kind == Kind::kPaired) return symbol.parts.add(folded(token));
  const std::size_t body_end = token.find_last_not_of("+#") + 1;
  symbol.wholes.add(folded(token));
  const auto is_joiner = [](char c) { return c == '.' || c == '-' || c == ':' || c == '_'; };
  for (std::size_t at = body; at < body_end;) {
    const std::size_t from = at;
    while (at < body_end && !is_joiner(token[at])) ++at;
    if (at > from) add_parts_of_segment(token.substr(from, at - from), from == 0 && at == token.size(), symbol);
    ++at;
  }
  if (symbol.parts.size() == 1 && symbol.wholes == symbol.parts) symbol.wholes.clear();
}

void each_word(std::string_view text, const std::function<void(const Symbol&)>& call) {
  Symbol symbol;
  each_token(text, [&](std::string_view token) {
    read_symbol(token, symbol);
    if (!symbol.parts.is_empty() || !symbol.wholes.is_empty())
      call(symbol);  // signs that only change others leave nothing
  });
}

}  // namespace olh_search
