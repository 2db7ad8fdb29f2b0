// Whether an HTML manual on this machine has a topic.
//
// Knows    where a manual's topic table lies and how its lines name a topic and its page.
// Not      how topics are normalised (url_build), how a URL names a topic (url_build).
// For      the lookup wrapper.
#include <string>
#include <string_view>

#include "ascii_case.h"
#include "bounded_text.h"
#include "line_reader.h"
#include "olh/support.h"
#include "olh_doclist.h"
#include "url_build.h"

namespace olh {

namespace {

constexpr std::string_view kTopicLine = "QELAddTopic([\"";
// What a line buffer of OLH_BUFFER_SIZE bytes holds: a longer line comes in pieces.
constexpr std::size_t kLongestTableLine = OLH_BUFFER_SIZE - 1;

// The table of the manual whose start page is at `location`; "" when it has none.
std::string table_of(std::string_view location) {
  if (!location.starts_with(kFileScheme)) return {};
  std::string path(location.substr(kFileScheme.size()));
  dirslash(path.data());
  remove_leaf(path.data());
  path.resize(text_of(path.c_str()).size());
  path += "/QELdata/QELAllData.js";
  dirslash(path.data());
  return fits(path) && path_exists(path.c_str()) == 1 ? path : std::string();
}

struct TopicLine {
  std::string_view topic;
  std::string_view rest;  // what follows the topic's closing quote
};

//   line                                   topic     rest
//   QELAddTopic(["Intro","intro.htm",...   Intro     ,"intro.htm",...
//   any other                              none
bool parse(std::string_view line, TopicLine& parsed) noexcept {
  if (!line.starts_with(kTopicLine)) return false;
  line.remove_prefix(kTopicLine.size());
  const std::size_t quote = line.find('"');
  if (quote == std::string_view::npos) return false;
  parsed.topic = line.substr(0, quote);
  parsed.rest = line.substr(quote + 1);
  return true;
}

// The page of a topic: the first quoted string after one separator, up to the line's end when the quote stays open.
// Leaves `out` alone when there is none.
void hand_out_page(char* out, std::string_view rest) noexcept {
  const std::size_t quote = rest.find('"', 1);
  if (quote == std::string_view::npos) return;
  const std::string_view page = rest.substr(quote + 1);
  write_buffer(out, page.substr(0, page.find_first_of("\"\n")));
}

std::string normal_form(std::string_view text) {
  std::string topic = normalised_topic(text);
  lower_ascii(topic.data());
  return topic;
}

// Whether the normal form of a text is `wanted`. A table holds thousands of other topics: none of them is built.
bool has_normal_form(std::string_view text, std::string_view wanted) noexcept {
  std::size_t matched = 0;
  for (const char byte : text) {
    if (!belongs_to_topic(byte)) continue;
    if (matched == wanted.size() || ascii_lowered(byte) != wanted[matched]) return false;
    ++matched;
  }
  return matched == wanted.size();
}

bool search(LineReader& table, const std::string& wanted, char* out) {
  std::string_view line;
  TopicLine parsed;
  while (table.next(line)) {
    if (!parse(line, parsed) || !has_normal_form(parsed.topic, wanted)) continue;
    print_debug("olh_docList::FindHtmlTopic: found topic: %s\n", wanted.c_str());
    hand_out_page(out, parsed.rest);
    return true;
  }
  return false;
}

}  // namespace

}  // namespace olh

// Both the topic and the table's are compared in their normal form: letters, digits, "-" and "_", in lower case.
int olh_docList::FindHtmlTopic(const char* docLocation, const char* topic, char* out) {
  print_debug("olh_docList::FindHtmlTopic\n");
  if (olh::is_empty(docLocation) || olh::is_empty(topic)) return 0;
  const std::string path = olh::table_of(docLocation);
  if (path.empty()) return 0;
  const std::string wanted = olh::normal_form(topic);
  olh::LineReader table(path.c_str(), olh::kLongestTableLine);
  if (!table) return 0;
  print_debug("olh_docList::FindHtmlTopic: looking for topic: %s\n", wanted.c_str());
  const int result = olh::search(table, wanted, out) ? 1 : 0;
  print_debug("olh_docList::FindHtmlTopic: done\n");
  return result;
}
