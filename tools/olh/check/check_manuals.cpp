// Checks of HTML manuals: their start pages, their topic tables, and the pages that those name.
#include <algorithm>
#include <map>
#include <optional>
#include <set>

#include "checks.h"
#include "page_places.h"
#include "shared.h"
#include "url.h"

namespace olh {

namespace {

constexpr std::string_view kTopicCall = "QELAddTopic";
constexpr std::string_view kTitleCall = "QELAddBookVar(\"DocTitle\"";

// Whether a browser can run the line: its quotes pair and its brackets close.
bool is_whole_call(std::string_view line) {
  std::size_t quotes = 0;
  for (std::size_t i = 0; i < line.size(); ++i)
    if (line[i] == '"' && (i == 0 || line[i - 1] != '\\')) ++quotes;
  const std::size_t close = line.find_last_of('"');
  return quotes % 2 == 0 && close != std::string_view::npos &&
         line.substr(close).find("])") != std::string_view::npos;
}

bool calls_for_topic(std::string_view line) {
  const std::size_t begin = line.find_first_not_of(" \t");
  return begin != std::string_view::npos && line.substr(begin).starts_with(kTopicCall);
}

bool has_title(const std::string& script) {
  return std::ranges::any_of(lines_of(script), [](const std::string& line) {
    return line.find(kTitleCall) != std::string::npos && quoted_in(line, 1).has_value();
  });
}

void check_topic(const CheckedManual& manual, const olh_viewers::TableTopic& topic,
                 std::map<std::string, int>& first_lines, Findings& findings) {
  const std::string normal = olh_viewers::normal_topic(topic.name);
  if (normal.empty()) {
    findings.error({manual.table, topic.line}, "the topic \"{}\" has no letter or digit, so that no tag names it",
                   topic.name);
    return;
  }
  const auto [first, is_first] = first_lines.try_emplace(normal, topic.line);
  if (!is_first)
    findings.warning({manual.table, topic.line},
                     "the topic \"{}\" is in line {} already, and a help call only finds that one", topic.name,
                     std::to_string(first->second));
  if (topic.page.empty()) findings.error({manual.table, topic.line}, "the topic \"{}\" names no page", topic.name);
}

// The file that a topic's page is in, below the manual; "" for the start page itself.
std::string file_of_page(const std::string& page) {
  return std::string(olh_viewers::without_query_and_fragment(page));
}

// A page that topics lead to, looked at once however many they are.
struct TopicPage {
  std::string path;                                  // below the root; "" when it is not there
  std::optional<std::set<std::string>> places = {};  // once a topic has asked for one
};

std::string path_of_page(const CheckedRoot& root, const std::string& page) {
  const std::string decoded = olh_viewers::decoded(page);
  return root.has(page) ? page : root.has(decoded) ? decoded : "";
}

void check_topic_page(const CheckedRoot& root, const CheckedManual& manual, const olh_viewers::TableTopic& topic,
                      TopicPage& page, Findings& findings) {
  if (page.path.empty())
    return findings.error({manual.table, topic.line}, "the page {} of the topic \"{}\" is not there",
                          file_of_page(topic.page), topic.name);
  const std::string place = olh_viewers::decoded(olh_viewers::fragment_of(topic.page));
  if (place.empty()) return;
  if (!page.places) page.places = olh_viewers::places_in_page(text_in_root(root.path, page.path).value_or(""));
  if (!page.places->contains(place))
    findings.warning({manual.table, topic.line},
                     "the page {} has no place \"{}\" for the topic \"{}\", so that it opens at its top",
                     file_of_page(topic.page), place, topic.name);
}

bool leads_away(const std::string& page) { return page.starts_with('/') || page.find("://") != std::string::npos; }

}  // namespace

void check_start_pages(const CheckedRoot& root, Findings& findings) {
  for (const CheckedManual& manual : root.manuals) {
    const std::string own_name = manual.name + ".htm";
    if (root.has(manual.directory + "/index.htm")) continue;
    if (root.is_web) {
      findings.error({manual.directory + "/index.htm"}, "is not there, but the lists name the manual");
    } else if (root.has(manual.directory + "/" + own_name)) {
      findings.warning(
          {manual.directory},
          "has the start page {}, which is not found once the root is on a web server; call it index.htm", own_name);
    } else if (has_wrong_start_page(root.path, manual.name)) {
      findings.error({manual.directory}, kWrongStartPage);
    } else {
      findings.error({manual.directory}, "has no start page index.htm, so that no help call finds the manual");
    }
  }
}

void check_topic_tables(const CheckedRoot& root, Findings& findings) {
  for (const CheckedManual& manual : root.manuals) {
    if (!manual.script) {
      findings.warning({manual.table},
                       "cannot be read, so that no help call finds a topic and the lists leave the manual out");
      continue;
    }
    if (manual.topics.empty()) findings.warning({manual.table}, "names no topic");
    if (!has_title(*manual.script))
      findings.warning({manual.table},
                       "gives no title (QELAddBookVar(\"DocTitle\",\"...\")), so that lists show \"{}\"",
                       manual.name);
  }
}

void check_topic_lines(const CheckedRoot& root, Findings& findings) {
  for (const CheckedManual& manual : root.manuals) {
    std::set<int> seen;
    std::map<std::string, int> first_lines;
    for (const olh_viewers::TableTopic& topic : manual.topics) {
      seen.insert(topic.line);
      check_topic(manual, topic, first_lines, findings);
    }
    int number = 0;
    for (const std::string& line : lines_of(manual.script.value_or(""))) {
      ++number;
      if (!calls_for_topic(line)) continue;
      if (!seen.contains(number)) {
        findings.error({manual.table, number},
                       "does not begin with QELAddTopic([\"NAME\", so that no help call finds this topic");
      } else if (!is_whole_call(line)) {
        findings.error({manual.table, number},
                       "is no whole QELAddTopic([...]); call, so that pages cannot read the table");
      }
    }
  }
}

void check_topic_pages(const CheckedRoot& root, Findings& findings) {
  for (const CheckedManual& manual : root.manuals) {
    std::map<std::string, TopicPage> pages;
    for (const olh_viewers::TableTopic& topic : manual.topics) {
      const std::string file = file_of_page(topic.page);
      if (file.empty()) continue;
      if (leads_away(file)) {
        findings.warning({manual.table, topic.line},
                         "the topic \"{}\" leads out of the manual, to {}, which was not looked for", topic.name,
                         file);
        continue;
      }
      const auto [known, is_new] = pages.try_emplace(file);
      if (is_new) known->second.path = path_of_page(root, manual.directory + "/" + file);
      check_topic_page(root, manual, topic, known->second, findings);
    }
  }
}

}  // namespace olh
