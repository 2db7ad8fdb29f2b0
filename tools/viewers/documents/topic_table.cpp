#include "topic_table.h"

#include <algorithm>
#include <cctype>
#include <optional>

#include "words.h"

namespace olh_viewers {

namespace {

constexpr std::string_view kTopicLine = "QELAddTopic([\"";

// Cuts the next text in quotes off, with one separator before it; a text whose quote stays open reaches to the end.
std::string next_text(std::string_view& rest) {
  const std::size_t begin = rest.find('"', 1);
  if (begin == std::string_view::npos) return "";
  rest.remove_prefix(begin + 1);
  const std::size_t end = std::min(rest.find('"'), rest.size());
  std::string text(rest.substr(0, end));
  rest.remove_prefix(std::min(end + 1, rest.size()));
  return text;
}

std::optional<TableTopic> topic_in(std::string_view line, int number) {
  if (!line.starts_with(kTopicLine)) return std::nullopt;
  line.remove_prefix(kTopicLine.size());
  const std::size_t quote = line.find('"');
  if (quote == std::string_view::npos) return std::nullopt;
  TableTopic topic;
  topic.line = number;
  topic.name = line.substr(0, quote);
  line.remove_prefix(quote + 1);
  topic.page = next_text(line);
  topic.title = next_text(line);
  return topic;
}

}  // namespace

std::vector<TableTopic> topics_in_table(std::string_view table) {
  std::vector<TableTopic> topics;
  int number = 0;
  for (const std::string& line : lines_of(table))
    if (auto topic = topic_in(line, ++number)) topics.push_back(std::move(*topic));
  return topics;
}

std::string normal_topic(std::string_view name) {
  std::string text;
  for (const char c : name) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x80 && (std::isalnum(byte) != 0 || c == '-' || c == '_'))
      text += static_cast<char>(std::tolower(byte));
  }
  return text;
}

}  // namespace olh_viewers
