#include "query.h"

#include <algorithm>

#include "words_in_text.h"

namespace olh_search {

namespace {

constexpr std::size_t kMostWords = 16;
constexpr std::string_view kQuotes[] = {"\"", "\u201c", "\u201d", "\u201e"};

void add(std::vector<std::string>& words, std::string_view word) {
  if (words.size() < kMostWords && std::ranges::find(words, word) == words.end()) words.emplace_back(word);
}

std::string with_plain_quotes(std::string_view text) {
  std::string plain(text);
  for (const std::string_view quote : kQuotes)
    for (std::size_t at = plain.find(quote); quote.size() > 1 && at != std::string::npos; at = plain.find(quote, at))
      plain.replace(at, quote.size(), "\"");
  return plain;
}

}  // namespace

std::vector<std::string> words_in_order(std::string_view text) {
  std::vector<std::string> words;
  each_word(text,
            [&words](const Symbol& symbol) { words.insert(words.end(), symbol.parts.begin(), symbol.parts.end()); });
  return words;
}

Query query_in(std::string_view text, const std::vector<std::string>& common) {
  const std::string plain = with_plain_quotes(text);
  Query query;
  std::vector<std::string> all;
  each_word(plain, [&](const Symbol& symbol) {
    for (const std::string_view part : symbol.parts) add(all, part);
    for (const std::string_view whole : symbol.wholes) add(query.wholes, whole);
  });
  for (const std::string& word : all)
    if (std::ranges::find(common, word) == common.end()) query.words.push_back(word);
  if (query.words.empty()) query.words = all;
  for (std::size_t open = plain.find('"'); open != std::string::npos;) {
    const std::size_t close = plain.find('"', open + 1);
    if (close == std::string::npos) break;
    std::vector<std::string> phrase = words_in_order(plain.substr(open + 1, close - open - 1));
    if (phrase.size() > 1) query.phrases.push_back(std::move(phrase));
    open = plain.find('"', close + 1);
  }
  return query;
}

}  // namespace olh_search
