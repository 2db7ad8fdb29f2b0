#include "asides.h"

#include <algorithm>
#include <string>

#include "words_in_text.h"

namespace olh_index {

namespace {

constexpr std::string_view kBegin[] = {"changelog",     "change log",  "changes",         "copying",   "copyright",
                                       "history",       "index of ",   "licence",         "license",   "news",
                                       "release notes", "what is new", "what\u2019s new", "what's new"};

}  // namespace

bool is_aside(std::string_view title) {
  const std::string low = olh_search::folded(title);
  return std::ranges::any_of(kBegin, [&low](std::string_view begin) { return low.starts_with(begin); }) ||
         low == "index" || low.ends_with(" index");
}

}  // namespace olh_index
