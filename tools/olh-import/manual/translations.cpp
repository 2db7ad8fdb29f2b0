#include "translations.h"

#include <algorithm>
#include <utility>

#include "html_page.h"

namespace olh_import {

namespace {

constexpr std::string_view kIndexPage = "index.";

bool is_small_letter(char c) { return c >= 'a' && c <= 'z'; }

// "de", "pt-br", "zh_TW"
bool is_language_of_name(std::string_view text) {
  constexpr std::size_t kLetters = 2;
  constexpr std::size_t kLongest = 7;
  return (text.size() == kLetters || (text.size() > kLetters + 2 && text.size() <= kLongest)) &&
         std::ranges::all_of(text.substr(0, kLetters), is_small_letter) &&
         (text.size() == kLetters || text[kLetters] == '-' || text[kLetters] == '_');
}

// The language in a name and what stands before and behind it, with the dots: "index." "de" ".html".
struct NameParts {
  std::string_view before;
  std::string_view language;
  std::string_view behind;
};

NameParts parts_of(std::string_view page) {
  const std::size_t dot = page.rfind('.');
  const std::size_t before = is_page_name(page) && dot > 0 ? page.rfind('.', dot - 1) : std::string_view::npos;
  if (before == std::string_view::npos) return {};
  const std::string_view language = page.substr(before + 1, dot - before - 1);
  if (!is_language_of_name(language)) return {};
  return {page.substr(0, before + 1), language, page.substr(dot)};
}

}  // namespace

Translations::Translations(const SourceTree& pages, std::string_view start) {
  for (const std::string& name : pages.names())
    if (const NameParts parts = parts_of(name); parts.before == kIndexPage) languages_.emplace(parts.language, name);
  if (languages_.size() < 2) languages_.clear();
  if (languages_.empty()) return;
  const std::string_view wanted = parts_of(start).language;
  taken_ = languages_.contains(wanted) ? wanted
           : languages_.contains("en") ? std::string_view("en")
                                       : languages_.begin()->first;
  for (const std::string& name : pages.names()) {
    const NameParts parts = parts_of(name);
    if (parts.language == taken_ || !languages_.contains(parts.language)) continue;
    std::string counterpart = std::string(parts.before).append(taken_).append(parts.behind);
    if (pages.has(counterpart)) counterparts_.emplace(name, std::move(counterpart));
  }
}

std::string Translations::index() const {
  const auto found = languages_.find(taken_);
  return found == languages_.end() ? "" : found->second;
}

const std::string& Translations::counterpart(const std::string& page) const {
  const auto found = counterparts_.find(page);
  return found == counterparts_.end() ? page : found->second;
}

std::vector<std::string> Translations::others() const {
  std::vector<std::string> others;
  for (const auto& [language, page] : languages_)
    if (language != taken_) others.push_back(language);
  return others;
}

}  // namespace olh_import
