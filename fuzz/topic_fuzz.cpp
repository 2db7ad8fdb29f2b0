// A manual's topic table and a topic of a host: the library finds what a plain reader finds, and so do the adapters.
#include <cstring>
#include <optional>

#include "fuzz.h"
#include "olh/support.h"
#include "olh_doclist.h"
#include "topic_page.h"

namespace {

constexpr std::size_t kLongest = OLH_BUFFER_SIZE - 1;
constexpr char kUntouched[] = "untouched";

std::string normal(const std::string& name) {
  std::string text;
  for (const char c : name)
    if (std::strchr("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_", c) != nullptr && c != '\0')
      text += c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
  return text;
}

// The page of a topic, kUntouched when its line names none; nothing for an unknown topic.
std::optional<std::string> plain_page(const std::string& table, const std::string& topic) {
  const std::string begin = "QELAddTopic([\"";
  for (const std::string& line : pieces_in(table, kLongest)) {
    const std::size_t end = line.find('"', begin.size());
    if (!line.starts_with(begin) || end == std::string::npos) continue;
    if (normal(line.substr(begin.size(), end - begin.size())) != normal(topic)) continue;
    const std::size_t page = line.find('"', end + 2);
    if (page == std::string::npos) return kUntouched;
    return line.substr(page + 1, line.find_first_of("\"\n", page + 1) - page - 1);
  }
  return std::nullopt;
}

const std::string& manual() {
  static const std::string directory = [] {
    std::filesystem::create_directories(scratch() + "/QELdata");
    return scratch();
  }();
  return directory;
}

}  // namespace

void try_input(const std::string& input) {
  const std::vector<std::string> parts = parts_of(input, 2);
  const std::string topic = parts[0].c_str();
  if (topic.empty()) return;
  std::string table = parts[1];
  // 0x01 N stands for N * 64 "x", so that a short input has long lines.
  for (std::size_t at; (at = table.find('\1')) < table.size() - 1 && table.size() < 100000;)
    table.replace(at, 2, static_cast<unsigned char>(table[at + 1]) * 64U, 'x');
  write_file(manual() + "/QELdata/QELAllData.js", table);
  char out[OLH_BUFFER_SIZE];
  std::memcpy(out, kUntouched, sizeof kUntouched);
  olh_docList locator;
  const int found = locator.FindHtmlTopic(("file://" + manual() + "/index.htm").c_str(), topic.c_str(), out);
  const std::optional<std::string> page = plain_page(table, topic);
  expect(found == static_cast<int>(page.has_value()), "a topic is in the table or not");
  expect(std::string(out) == page.value_or(kUntouched).c_str(), "the page of the first such line");
  const std::vector<std::string> lines = pieces_in(table, kLongest);
  for (const std::string& line : lines)
    if (line.size() == kLongest) return;  // the adapters know no such limit
  expect(olh_viewers::target_in_table(table, topic) == (page.value_or(kUntouched) == kUntouched ? "" : *page),
         "the adapters read the table as the library does");
}
