#include "search_text.h"

#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>

#include "bounds.h"
#include "refusal.h"
#include "source_tree.h"
#include "topic_table.h"
#include "url.h"

namespace olh_import {

namespace {

constexpr const char* kSearchFile = "QELdata/QELSearchText.js";
constexpr const char* kFirstLine =
    "// Made from the pages by olh import: what the search in the page looks through, passage by passage.\n";

std::string as_json(const nlohmann::json& value) {
  return value.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

}  // namespace

void SearchText::add(const HtmlPage& page) {
  PageText text = {page.name, 0};
  for (const Passage& passage : page.passages) {
    const std::string line = "," + as_json({passage.place, passage.heading, passage.text}).substr(1) + ");\n";
    texts_.write(line);
    text.size += line.size();
  }
  pages_.push_back(std::move(text));
}

std::string SearchText::next_text(const PageText& text, const std::string& topic) {
  const std::string lines = texts_.read(text.size);
  if (topic.empty()) return "";
  const std::string beginning = "QELAddText([" + as_json(topic);
  std::string calls;
  for (std::size_t at = 0, end = 0; at < lines.size(); at = end) {
    end = lines.find('\n', at) + 1;
    calls += beginning;
    calls.append(lines, at, end - at);
  }
  return calls;
}

void SearchText::write(const std::function<std::string(const std::string&)>& topic_of_page) {
  texts_.rewind();
  auto next = pages_.begin();
  bool is_first = true;
  manual_.write(kSearchFile, [&]() -> std::optional<std::string> {
    if (std::exchange(is_first, false)) return std::string(kFirstLine);
    if (next == pages_.end()) return std::nullopt;
    const PageText& text = *next++;
    return next_text(text, topic_of_page(text.page));
  });
}

void write_search_text(const std::string& manual_folder) {
  const SourceTree files(manual_folder);
  const std::optional<std::string> table = files.read(olh_viewers::kTopicTable, kLargestTable);
  if (!table) throw Refusal(kNoSource, manual_folder + " has no topic table " + olh_viewers::kTopicTable + ".");
  const OutputFolder made(manual_folder);
  SearchText text(made);
  std::map<std::string, std::string> topics;  // by their pages
  for (const olh_viewers::TableTopic& topic : olh_viewers::topics_in_table(*table)) {
    const std::string page = olh_viewers::decoded(topic.page);
    if (!is_page_name(page) || !topics.try_emplace(page, topic.name).second) continue;
    if (const std::optional<std::string> bytes = files.read(page)) text.add(read_html_page(page, *bytes));
  }
  text.write([&topics](const std::string& page) { return topics.at(page); });
  made.put(kSearchFile, manual_folder + "/" + kSearchFile);
}

}  // namespace olh_import
