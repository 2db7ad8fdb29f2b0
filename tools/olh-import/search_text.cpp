#include "search_text.h"

#include <list>
#include <map>
#include <nlohmann/json.hpp>

#include "bounds.h"
#include "refusal.h"
#include "source_tree.h"
#include "topic_table.h"
#include "url.h"

namespace olh_import {

namespace {

constexpr const char* kSearchFile = "QELdata/QELSearchText.js";
constexpr std::string_view kFirstLine =
    "// Made from the pages by olh import: what the search in the page looks through, passage by passage.\n";

std::string as_json(const nlohmann::json& value) {
  return value.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

}  // namespace

void SearchText::add(const HtmlPage& page) {
  PageText text = {page.name, {}};
  for (const Passage& passage : page.passages) {
    const std::string values = as_json({passage.place, passage.heading, passage.text});
    text.passages.push_back("," + values.substr(1) + ");\n");
  }
  pages_.push_back(std::move(text));
}

void SearchText::write(const OutputFolder& manual,
                       const std::function<std::string(const std::string&)>& topic_of_page) const {
  std::list<std::string> beginnings;
  std::vector<std::string_view> pieces = {kFirstLine};
  for (const PageText& text : pages_) {
    const std::string topic = topic_of_page(text.page);
    if (topic.empty()) continue;
    const std::string& beginning = beginnings.emplace_back("QELAddText([" + as_json(topic));
    for (const std::string& passage : text.passages) pieces.insert(pieces.end(), {beginning, passage});
  }
  manual.write(kSearchFile, pieces);
}

void write_search_text(const std::string& manual_folder) {
  const SourceTree files(manual_folder);
  const std::optional<std::string> table = files.read(olh_viewers::kTopicTable, kLargestTable);
  if (!table) throw Refusal(kNoSource, manual_folder + " has no topic table " + olh_viewers::kTopicTable + ".");
  SearchText text;
  std::map<std::string, std::string> topics;  // by their pages
  for (const olh_viewers::TableTopic& topic : olh_viewers::topics_in_table(*table)) {
    const std::string page = olh_viewers::decoded(topic.page);
    if (!is_page_name(page) || !topics.try_emplace(page, topic.name).second) continue;
    if (const std::optional<std::string> bytes = files.read(page)) text.add(read_html_page(page, *bytes));
  }
  const OutputFolder made(manual_folder);
  text.write(made, [&topics](const std::string& page) { return topics.at(page); });
  made.put(kSearchFile, manual_folder + "/" + kSearchFile);
}

}  // namespace olh_import
