#include "json_texts.h"

#include <utf8proc.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <nlohmann/json.hpp>

namespace olh_search {

namespace {

constexpr std::size_t kBytesOfCharacter = 4;

bool is_plain(char c) { return c >= ' ' && c != '"' && c != '\\' && static_cast<unsigned char>(c) < 0x80; }

// Whether all of eight bytes are plain, in a few steps for them together: most of a text is.
bool are_plain(const char* bytes) {
  constexpr std::uint64_t kOnes = 0x0101010101010101;
  constexpr std::uint64_t kHighs = 0x80 * kOnes;
  std::uint64_t word = 0;
  std::memcpy(&word, bytes, sizeof word);
  const auto has = [](std::uint64_t in, char c) {
    const std::uint64_t differs = in ^ (static_cast<unsigned char>(c) * kOnes);
    return (differs - kOnes) & ~differs & kHighs;
  };
  const std::uint64_t has_control = (word - ' ' * kOnes) & ~word & kHighs;
  return ((word & kHighs) | has_control | has(word, '"') | has(word, '\\')) == 0;
}

// Bytes of characters that stand for themselves in JSON, from the beginning on.
std::size_t plain_bytes(std::string_view text) {
  std::size_t at = 0;
  for (;;) {
    while (at + sizeof(std::uint64_t) <= text.size() && are_plain(text.data() + at)) at += sizeof(std::uint64_t);
    while (at < text.size() && is_plain(text[at])) ++at;
    if (at == text.size() || static_cast<unsigned char>(text[at]) < 0x80) return at;
    utf8proc_int32_t point = 0;
    const auto rest = static_cast<utf8proc_ssize_t>(std::min(text.size() - at, kBytesOfCharacter));
    const auto size = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()) + at, rest, &point);
    if (size <= 0) return at;
    at += static_cast<std::size_t>(size);
  }
}

char meant_by_escape(char c) {
  constexpr std::string_view kSigns = "\"\\/bfnrt";
  constexpr std::string_view kMeant = "\"\\/\b\f\n\r\t";
  const std::size_t at = kSigns.find(c);
  return at == std::string_view::npos ? '\0' : kMeant[at];
}

// Takes a text in quotes off the front; false for what needs a whole reader.
bool take_text(std::string_view& row, std::string& text) {
  if (!row.starts_with('"')) return false;
  row.remove_prefix(1);
  for (;;) {
    const std::size_t plain = plain_bytes(row);
    text.append(row.substr(0, plain));
    row.remove_prefix(plain);
    if (row.empty()) return false;
    if (row[0] == '"') break;
    const char meant = row[0] == '\\' && row.size() > 1 ? meant_by_escape(row[1]) : '\0';
    if (meant == '\0') return false;
    text += meant;
    row.remove_prefix(2);
  }
  row.remove_prefix(1);
  return true;
}

// Of a row ["A", "B"] with the most usual escapes only.
bool take_texts(std::string_view row, std::vector<std::string>& texts) {
  do {
    if (row.empty()) return false;
    row.remove_prefix(1);
    row.remove_prefix(std::min(row.find_first_not_of(' '), row.size()));
    if (!take_text(row, texts.emplace_back())) return false;
  } while (row.starts_with(','));
  return row == "]";
}

}  // namespace

std::vector<std::string> texts_in_call(std::string_view line, std::string_view call) {
  const std::size_t end = line.rfind(']');
  if (!line.starts_with(call) || end == std::string_view::npos || end < call.size()) return {};
  line = line.substr(call.size(), end + 1 - call.size());
  std::vector<std::string> texts;
  if (line.starts_with('[') && take_texts(line, texts)) return texts;
  texts.clear();
  const nlohmann::json row = nlohmann::json::parse(line, nullptr, false);
  if (row.is_array())
    for (const nlohmann::json& one : row) texts.push_back(one.is_string() ? one.get<std::string>() : "");
  return texts;
}

void append_json(std::string& script, std::string_view text) {
  if (const std::size_t plain = plain_bytes(text); plain == text.size()) {
    script.append("\"").append(text).append("\"");
    return;
  }
  script += '"';
  while (!text.empty()) {
    const std::size_t plain = plain_bytes(text);
    script.append(text.substr(0, plain));
    text.remove_prefix(plain);
    if (text.empty()) break;
    const std::string one =
        nlohmann::json(text.substr(0, 1)).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
    script.append(std::string_view(one).substr(1, one.size() - 2));
    text.remove_prefix(1);
  }
  script += '"';
}

}  // namespace olh_search
