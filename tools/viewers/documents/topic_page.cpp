#include "topic_page.h"

#include "files.h"
#include "topic_table.h"
#include "url.h"
#include "words.h"

namespace olh_viewers {

namespace {

constexpr std::string_view kStartPage = "/index.htm";

// The value of a key in "key=value&key=value"; "" without one.
std::string value_of(std::string_view pairs, std::string_view key) {
  for (const std::string& pair : pieces_of(pairs, '&'))
    if (pair.size() > key.size() && pair.starts_with(key) && pair[key.size()] == '=')
      return pair.substr(key.size() + 1);
  return "";
}

// A portal is a page of scripts; beside it lies one without, when the lists were made.
TextPage portal_page(const std::string& url, std::string_view page, const Fetch& fetch) {
  std::string directory(page.substr(0, page.rfind('/')));
  if (!directory.ends_with("/tomedecks")) directory += "/tomedecks";
  const std::string basic = directory + "/basic.htm";
  return {fetch(basic).empty() ? url : basic, ""};
}

}  // namespace

std::string target_in_table(std::string_view table, std::string_view topic) {
  const std::string wanted = normal_topic(topic);
  for (const TableTopic& known : topics_in_table(table))
    if (normal_topic(known.name) == wanted) return known.page;
  return "";
}

TextPage page_without_scripts(const std::string& url, const Fetch& fetch) {
  const std::string_view page = without_query_and_fragment(url);
  if (page.ends_with("/index.html")) return portal_page(url, page, fetch);
  const std::string topic = value_of(fragment_of(url), "topic");
  if (!page.ends_with(kStartPage) || topic.empty()) return {url, ""};
  const std::string directory(page.substr(0, page.size() - kStartPage.size()));
  const std::string target = target_in_table(fetch(directory + "/" + kTopicTable), topic);
  // A target leads nowhere but below the manual.
  const bool is_inside = !target.empty() && target[0] != '/' && target.find("..") == std::string::npos &&
                         target.find(':') == std::string::npos;
  return is_inside ? TextPage{directory + "/" + target, ""} : TextPage{std::string(page), topic};
}

}  // namespace olh_viewers
