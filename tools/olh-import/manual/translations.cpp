#include "translations.h"

#include <algorithm>
#include <iterator>

#include "html_page.h"

namespace olh_import {

namespace {

constexpr std::string_view kIndexPage = "index";

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
    if (const NameParts parts = parts_of(name); parts.before == std::string(kIndexPage) + ".")
      languages_.emplace(parts.language);
  if (languages_.size() < 2) languages_.clear();
  if (languages_.empty()) return;
  const std::string_view wanted = parts_of(start).language;
  taken_ = languages_.contains(wanted) ? wanted
           : languages_.contains("en") ? std::string_view("en")
                                       : *languages_.begin();
}

bool Translations::is_other(std::string_view page) const {
  const std::string_view language = parts_of(page).language;
  return language != taken_ && languages_.contains(language);
}

std::string Translations::counterpart(const std::string& page) const {
  if (!is_other(page)) return page;
  const NameParts parts = parts_of(page);
  return std::string(parts.before).append(taken_).append(parts.behind);
}

std::vector<std::string> Translations::others() const {
  std::vector<std::string> others;
  std::ranges::copy_if(languages_, std::back_inserter(others),
                       [this](const std::string& language) { return language != taken_; });
  return others;
}

}  // namespace olh_import
