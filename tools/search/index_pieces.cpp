#include "index_pieces.h"

#include <algorithm>
#include <cstdio>

#include "packed_numbers.h"

namespace olh_search {

using nlohmann::json;

namespace {

std::string text_at(const json& row, std::size_t at) {
  return row.is_array() && at < row.size() && row[at].is_string() ? row[at].get<std::string>() : "";
}

std::uint32_t number_at(const json& row, std::size_t at) {
  if (!row.is_array() || at >= row.size() || !row[at].is_number_unsigned()) return 0;
  return static_cast<std::uint32_t>(std::min<std::uint64_t>(row[at].get<std::uint64_t>(), kMostSections));
}

const json& member(const json& object, const char* name) {
  static const json nothing;
  return object.is_object() && object.contains(name) ? object[name] : nothing;
}

// What stands between a call's name and its end; "" for another script.
std::string_view value_of_call(std::string_view script) {
  const std::size_t comma = script.find(',');
  const std::size_t end = script.rfind(')');
  if (!script.starts_with("olhIndexPiece(\"") || comma == std::string_view::npos || end == std::string_view::npos ||
      end <= comma)
    return {};
  return script.substr(comma + 1, end - comma - 1);
}

// Nothing in a piece lies deeper than a row of a list in an object; what does is passed over.
bool is_shallow(int depth, json::parse_event_t /*event*/, json& /*value*/) { return depth <= 3; }

std::string text_of(const json& value) { return value.is_string() ? value.get<std::string>() : ""; }

// Where each part begins, of parts with so many sections each.
std::vector<std::uint32_t> sums_of(const std::string& packed) {
  std::vector<std::uint32_t> sums = {0};
  for (PackedNumbers numbers(packed); !numbers.at_end();)
    sums.push_back(std::min(sums.back() + std::min(numbers.next(), kMostSections + 1), kMostSections + 1));
  return sums;
}

}  // namespace

void Sum::add_number(std::uint64_t number) {
  constexpr std::uint64_t kOdd = 0x9e3779b97f4a7c15U;
  sum_ = (sum_ ^ number) * kOdd;
  sum_ ^= sum_ >> 29;
}

// Eight bytes at a time, in the same order on every machine.
void Sum::add(std::string_view text) {
  add_number(text.size());
  while (!text.empty()) {
    const std::string_view some = text.substr(0, 8);
    std::uint64_t number = 0;
    for (std::size_t at = 0; at < some.size(); ++at)
      number |= std::uint64_t{static_cast<unsigned char>(some[at])} << (8 * at);
    add_number(number);
    text.remove_prefix(some.size());
  }
}

std::string Sum::name() const {
  char name[32];
  std::snprintf(name, sizeof name, "%016llx", static_cast<unsigned long long>(sum_));
  return name;
}

std::vector<std::string> words_with_blanks(std::string_view text) {
  std::vector<std::string> words;
  while (!text.empty()) {
    const std::string_view word = text.substr(0, text.find(' '));
    if (!word.empty()) words.emplace_back(word);
    text.remove_prefix(std::min(word.size() + 1, text.size()));
  }
  return words;
}

std::string script_of_piece(const std::string& name, std::string_view value) {
  std::string script;
  script.reserve(name.size() + value.size() + 32);
  return script.append("olhIndexPiece(\"").append(name).append("\",").append(value).append(");\n");
}

std::optional<json> value_in_script(std::string_view script) {
  json value = json::parse(value_of_call(script), is_shallow, false);
  if (value.is_discarded()) return std::nullopt;
  return value;
}

std::string text_in_script(std::string_view script) {
  const std::string_view value = value_of_call(script);
  return value.starts_with('"') ? text_of(json::parse(value, nullptr, false)) : "";
}

std::optional<IndexHead> head_in(std::string_view script) {
  const std::optional<json> value = value_in_script(script);
  if (!value || member(*value, "version") != kIndexVersion) return std::nullopt;
  IndexHead head;
  head.folder = text_of(member(*value, "folder"));
  head.sources = text_of(member(*value, "sources"));
  head.first_sections = sums_of(text_of(member(*value, "sections_of_pages")));
  head.first_of_texts = sums_of(text_of(member(*value, "sections_of_texts")));
  head.sections = head.first_sections.back();
  head.common = words_with_blanks(text_of(member(*value, "common")));
  for (const json& words : member(*value, "meant_words")) head.meant_words.push_back(text_of(words));
  for (const json& word : member(*value, "first_words")) head.first_words.push_back(text_of(word));
  std::size_t pages = 0;
  for (const json& row : member(*value, "manuals")) {
    head.manuals.push_back(
        {text_at(row, 0), text_at(row, 1), text_at(row, 2) == "pdf", number_at(row, 3), text_at(row, 4)});
    pages += head.manuals.back().pages;
  }
  const auto is_name = [](char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z'); };
  const bool holds = head.sections <= kMostSections && pages + 1 == head.first_sections.size() &&
                     head.first_of_texts.back() == head.sections && std::ranges::is_sorted(head.first_words) &&
                     !head.folder.empty() && std::ranges::all_of(head.folder, is_name);
  if (!holds) return std::nullopt;
  return head;
}

TextPiece texts_in(std::string_view script) {
  TextPiece piece;
  const json value = value_in_script(script).value_or(json());
  for (const json& row : member(value, "pages"))
    piece.pages.push_back({number_at(row, 0), text_at(row, 1), text_at(row, 2), text_at(row, 3)});
  for (const json& row : member(value, "sections"))
    piece.sections.push_back({text_at(row, 0), text_at(row, 1), text_at(row, 2), text_at(row, 3)});
  return piece;
}

std::vector<std::string> near_words_in(std::string_view script) { return words_with_blanks(text_in_script(script)); }

}  // namespace olh_search
