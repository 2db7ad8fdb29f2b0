#include "manual_text.h"

#include <algorithm>
#include <filesystem>
#include <unordered_map>
#include <unordered_set>

#include "files.h"
#include "json_texts.h"
#include "page_links.h"
#include "topic_table.h"

namespace olh_index {

namespace {

constexpr std::size_t kFewestTails = 5;
constexpr std::size_t kMostPages = 50000;
constexpr std::size_t kMostLinks = 20;      // different texts
constexpr std::size_t kBytesOfHead = 2048;  // of a page, in which its language and keywords stand

template <typename Take>
void each_line(std::string_view text, Take take) {
  while (!text.empty()) {
    const std::string_view line = text.substr(0, text.find('\n'));
    take(line);
    text.remove_prefix(std::min(line.size() + 1, text.size()));
  }
}

std::string language_of_page(std::string_view page) {
  page = page.substr(0, kBytesOfHead);
  const std::size_t at = page.find(" lang=");
  if (at == std::string_view::npos) return "";
  std::string_view value = page.substr(at + 6);
  if (!value.empty() && (value[0] == '"' || value[0] == '\'')) value.remove_prefix(1);
  return std::string(
      value.substr(0, value.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ-")));
}

// What a page says that it is about: <meta name="keywords" content="...">.
std::string_view keywords_of_page(std::string_view page) {
  constexpr std::string_view kKeywords = "<meta name=\"keywords\" content=\"";
  page = page.substr(0, kBytesOfHead);
  const std::size_t at = page.find(kKeywords);
  if (at == std::string_view::npos) return {};
  page.remove_prefix(at + kKeywords.size());
  return page.substr(0, page.find('"'));
}

// Pages in the order of the table; the places of a page stand together.
class Pages {
 public:
  Pages(IndexedManual& manual, std::string below) : manual_(manual), below_(std::move(below)) {}

  void add_topic(const olh_viewers::TableTopic& topic) {
    const std::string file = topic.page.substr(0, topic.page.find('#'));
    const std::string place = topic.page.substr(std::min(file.size() + 1, topic.page.size()));
    const std::string title = topic.title.empty() ? topic.name : topic.title;
    const auto [number, is_new] = pages_.try_emplace(file, manual_.pages.size());
    if (is_new) manual_.pages.push_back({below_ + file, title, topic.name, {}, {}});
    Page& page = manual_.pages[number->second];
    // The page's own topic is the one without a place, wherever it stands in the table.
    if (place.empty() && own_topics_.insert(number->second).second) {
      page.title = title;
      page.topic = topic.name;
    }
    if (topics_.try_emplace(topic.name, topic_list_.size()).second)
      topic_list_.push_back({topic.name, number->second, place, title});
  }

  void add_passage(std::vector<std::string> row) {
    const auto found = topics_.find(row[0]);
    if (found == topics_.end()) return;
    Topic& topic = topic_list_[found->second];
    if (!topic.place.empty() && row[1].empty()) row[1] = topic.place;
    Page& page = manual_.pages[topic.page];
    places_[topic.page].try_emplace(row[1], page.sections.size());
    if (row[2].empty()) row[2] = topic.title;
    page.sections.push_back(
        {std::move(row[1]), std::move(row[2]), std::move(row[3]), topic.place.empty() ? "" : topic.name, {}});
    topic.has_text = true;
  }

  // A tail that nearly all titles have, "(GNU Octave)" for example, says nothing of a page.
  void cut_tails() {
    std::unordered_map<std::string, std::size_t> tails;
    for (const Page& page : manual_.pages) {
      const std::size_t begin = start_of_tail(page.title);
      if (begin != std::string::npos) ++tails[page.title.substr(begin)];
    }
    for (const auto& [tail, count] : tails) {
      if (count < kFewestTails || 2 * count < manual_.pages.size()) continue;
      for (Page& page : manual_.pages) {
        cut(page.title, tail);
        for (Section& section : page.sections) cut(section.heading, tail);
      }
    }
  }

  // A topic without a text of its own is the section at its place; else it is found by its title.
  void add_titles() {
    for (const Topic& topic : topic_list_) {
      if (topic.has_text) continue;
      std::vector<Section>& sections = manual_.pages[topic.page].sections;
      const auto [at, is_new] = places_[topic.page].try_emplace(topic.place, sections.size());
      if (is_new)
        sections.push_back({topic.place, topic.title, "", topic.place.empty() ? "" : topic.name, {}});
      else if (!topic.place.empty() && sections[at->second].topic.empty())
        take_topic_of(topic, sections[at->second]);
    }
  }

 private:
  static std::size_t start_of_tail(const std::string& title) {
    std::size_t begin = std::string::npos;
    for (const std::string_view sign : {" (", " - ", " | ", " \u2014 ", " \u2013 "})
      begin = std::min(begin, title.find(sign, 1));
    return begin;
  }
  static void cut(std::string& title, const std::string& tail) {
    if (title.size() > tail.size() && title.ends_with(tail)) title.resize(title.size() - tail.size());
  }

  struct Topic {
    std::string name;
    std::size_t page;
    std::string place;
    std::string title;
    bool has_text = false;
  };

  // A title says the same as a long signature, and better; the signature is text then.
  static void take_topic_of(const Topic& topic, Section& section) {
    section.topic = topic.name;
    if (2 * topic.title.size() >= section.heading.size()) return;
    section.text = section.heading + (section.text.empty() ? "" : " ") + section.text;
    section.heading = topic.title;
  }

  IndexedManual& manual_;
  std::string below_;
  std::unordered_map<std::string, std::size_t> pages_;
  std::unordered_set<std::size_t> own_topics_;  // pages that have one
  std::unordered_map<std::string, std::size_t> topics_;
  std::vector<Topic> topic_list_;
  std::unordered_map<std::size_t, std::unordered_map<std::string, std::size_t>> places_;
};

}  // namespace

void take_topics(std::string_view table, std::string_view texts, const std::string& below, IndexedManual& manual) {
  Pages pages(manual, below);
  for (const olh_viewers::TableTopic& topic : olh_viewers::topics_in_table(table)) pages.add_topic(topic);
  each_line(texts, [&](std::string_view line) {
    if (std::vector<std::string> row = olh_search::texts_in_call(line, "QELAddText("); row.size() >= 4)
      pages.add_passage(std::move(row));
  });
  pages.add_titles();
  pages.cut_tails();
}

namespace {

// The ways to all pages from the folder, in an order that does not depend on the file system.
std::vector<std::string> pages_below(const std::string& folder) {
  namespace fs = std::filesystem;
  std::vector<std::string> pages;
  std::error_code failed;
  for (fs::recursive_directory_iterator at(folder, failed), end; !failed && at != end && pages.size() < kMostPages;
       at.increment(failed)) {
    const std::string kind = at->path().extension().string();
    if (kind == ".htm" || kind == ".html") pages.push_back(at->path().string().substr(folder.size() + 1));
  }
  std::ranges::sort(pages);
  return pages;
}

// What links to a page say, and to a place "page#place".
using LinkTexts = std::unordered_map<std::string, std::vector<std::string>*>;

std::vector<std::string>* texts_of_place(const LinkTexts& texts, const LinkedPlace& to) {
  auto found = to.place.empty() ? texts.end() : texts.find(to.page + "#" + to.place);
  if (found == texts.end()) found = texts.find(to.page);
  return to.page.empty() || found == texts.end() ? nullptr : found->second;
}

}  // namespace

void take_links(const std::string& folder, const std::string& below, IndexedManual& manual) {
  LinkTexts texts;
  for (Page& page : manual.pages) {
    const std::string name = page.address.substr(below.size());
    texts.emplace(name, &page.links);
    for (Section& section : page.sections) texts.emplace(name + "#" + section.anchor, &section.links);
  }
  for (const std::string& name : pages_below(folder)) {
    const std::string markup = olh_viewers::content_of(olh_viewers::path_in(folder, name));
    if (const auto page = texts.find(name); page != texts.end())
      if (const std::string_view keywords = keywords_of_page(markup); !keywords.empty())
        page->second->emplace_back(keywords);
    std::unordered_map<std::string_view, std::vector<std::string>*>
        of_targets;  // a page has most links several times
    each_link(markup, [&](const Link& link) {
      const auto [target, is_new] = of_targets.try_emplace(link.target, nullptr);
      if (is_new) target->second = texts_of_place(texts, linked_place(name, link.target));
      std::vector<std::string>* const known = target->second;
      if (known == nullptr || known->size() >= kMostLinks) return;
      std::string text = text_of_link(link.markup);
      if (std::ranges::find(*known, text) == known->end()) known->push_back(std::move(text));
    });
  }
}

void read_manual(const std::string& folder, olh_search::ManualScripts scripts, const std::string& below,
                 IndexedManual& manual) {
  take_topics(scripts.table, scripts.texts ? std::string_view(*scripts.texts) : "", below, manual);
  const bool has_texts = scripts.texts.has_value();
  scripts = {};  // the manual has all of them
  take_links(folder, below, manual);
  if (!has_texts)
    manual.unsearched = manual.pages.empty() ? "has no topic table" : "has no search text: its titles are searched";
  // The start page of an imported manual is not its own.
  if (!manual.pages.empty())
    manual.language = language_of_page(
        olh_viewers::content_of(olh_viewers::path_in(folder, manual.pages[0].address.substr(below.size()))));
  if (manual.language.empty()) manual.language = language_of_page(olh_viewers::content_of(folder + "/index.htm"));
  if (manual.language.empty()) manual.language = "en";
}

}  // namespace olh_index
