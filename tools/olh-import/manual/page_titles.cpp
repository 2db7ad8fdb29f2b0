#include "page_titles.h"

#include <algorithm>
#include <string_view>

namespace olh_import {

namespace {

constexpr std::string_view kBorders[] = {": ", " - ", " | ", " \u2014 ", " \u2013 ", " ("};
constexpr int kMostBorders = 3;  // that are looked at from each end of a title

using Counts = std::map<std::string, std::size_t>;

// Counts what a title may end with, border included.
void count_ends(std::string_view title, Counts& ends) {
  std::size_t end = title.size();
  for (int tried = 0; tried < kMostBorders; ++tried) {
    std::size_t last = std::string_view::npos;
    for (const std::string_view border : kBorders)
      if (const std::size_t at = title.substr(0, end).rfind(border); at != std::string_view::npos && at > 0)
        last = last == std::string_view::npos ? at : std::max(last, at);
    if (last == std::string_view::npos) return;
    ++ends[std::string(title.substr(last))];
    end = last;
  }
}

// The same for what it may begin with. A bracket ends nothing.
void count_fronts(std::string_view title, Counts& fronts) {
  std::size_t from = 0;
  for (int tried = 0; tried < kMostBorders; ++tried) {
    std::size_t first = std::string_view::npos;
    for (const std::string_view border : kBorders)
      if (const std::size_t at = title.find(border, from); border != " (" && at != std::string_view::npos)
        first = std::min(first, at + border.size());
    if (first >= title.size()) return;
    ++fronts[std::string(title.substr(0, first))];
    from = first;
  }
}

// The longest text that nine of ten have, of three at least, or that is the manual's title with its border; "" without
// one.
std::string repeated(const Counts& counts, std::size_t titles, const std::string& manual) {
  constexpr std::size_t kFewest = 3;
  constexpr std::size_t kMostAround = 5;
  std::string longest;
  for (const auto& [text, count] : counts) {
    const bool is_manual =
        !manual.empty() && text.size() <= manual.size() + kMostAround && text.find(manual) != std::string::npos;
    const bool is_usual = count >= kFewest && 10 * count >= 9 * titles;
    if ((is_manual || is_usual) && text.size() > longest.size()) longest = text;
  }
  return longest;
}

}  // namespace

void PageTitles::add(const HtmlPage& page) {
  pages_[page.name] = page.title;
  if (page.is_title_of_head) of_heads_[page.name] = page.title;
  for (const Passage& passage : page.passages)
    if (passage.level > 0 && !passage.place.empty())
      places_.try_emplace(page.name + "#" + passage.place, passage.heading);
}

void PageTitles::cut_repeated(const std::string& manual) {
  Counts ends;
  Counts fronts;
  for (const auto& [page, title] : of_heads_) {
    count_ends(title, ends);
    count_fronts(title, fronts);
  }
  const std::string end = repeated(ends, of_heads_.size(), manual);
  const std::string front = repeated(fronts, of_heads_.size(), manual);
  for (const auto& [page, whole] : of_heads_) {
    std::string& title = pages_[page];
    if (title.size() > end.size() && title.ends_with(end)) title.resize(title.size() - end.size());
    if (title.size() > front.size() && title.starts_with(front)) title.erase(0, front.size());
  }
}

std::string PageTitles::of_page(const std::string& page) const {
  const auto found = pages_.find(page);
  return found == pages_.end() || found->second.empty() ? page : found->second;
}

std::string PageTitles::whole_of_page(const std::string& page) const {
  const auto found = of_heads_.find(page);
  return found == of_heads_.end() || found->second.empty() ? of_page(page) : found->second;
}

std::string PageTitles::at(const Topic& topic) const {
  if (!topic.title.empty()) return topic.title;
  const auto found = places_.find(topic.page + "#" + topic.place);
  return found == places_.end() || found->second.empty() ? of_page(topic.page) : found->second;
}

}  // namespace olh_import
