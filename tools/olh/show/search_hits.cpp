#include "search_hits.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "files.h"
#include "find.h"
#include "shared.h"
#include "words_in_text.h"

namespace olh {

namespace {

constexpr std::size_t kHits = 10;
constexpr std::size_t kMostBytesOfPiece = std::size_t{64} * 1024 * 1024;
constexpr std::size_t kBefore = 60;  // bytes of a text before the first word of the query
constexpr std::size_t kExcerpt = 200;

std::string piece_at(const std::string& path) {
  return olh_viewers::text_of_file(path, kMostBytesOfPiece).value_or("");
}

// Where the first word of the query stands in the text; 0 without one.
std::size_t first_word(const std::string& text, const olh_search::Ranking& ranking) {
  std::size_t first = text.size();
  const std::string low = olh_search::folded(text);
  if (low.size() != text.size()) return 0;  // folded letters have other lengths
  for (const olh_search::LookedForWord& word : ranking.words)
    if (!word.mark.empty()) first = std::min(first, low.find(word.mark));
  return first >= text.size() ? 0 : first;
}

std::string excerpt(const std::string& text, const olh_search::Ranking& ranking) {
  const std::size_t at = first_word(text, ranking);
  const std::size_t blank = at < kBefore ? 0 : text.find(' ', at - kBefore);
  const std::size_t begin = blank == 0 || blank == std::string::npos ? 0 : blank + 1;
  std::string_view part = olh_search::cut_to(std::string_view(text).substr(begin), kExcerpt);
  const bool is_cut = begin + part.size() < text.size();
  if (is_cut && part.rfind(' ') != std::string_view::npos) part = part.substr(0, part.rfind(' '));
  return (begin > 0 ? "... " : "") + std::string(part) + (is_cut ? " ..." : "");
}

bool has_heading(const olh_search::Hit& hit) {
  return !hit.section.heading.empty() && !hit.section.anchor.empty() && hit.section.heading != hit.page.title;
}

std::string file_of(const SearchHits& found, const olh_search::Hit& hit) {
  return found.root + "/" + hit.page.address + (hit.section.anchor.empty() ? "" : "#" + hit.section.anchor);
}

bool is_pdf(const olh_search::Hit& hit) { return hit.page.address.starts_with("pdfdocs/"); }

std::string outcome(const SearchHits& found, const std::string& query) {
  std::string said;
  for (const olh_search::LookedForWord& word : found.ranking.words) {
    if (word.taken == word.asked) continue;
    if (!word.taken.empty()) said += "Results for " + quoted(word.taken) + ": ";
    said += quoted(word.asked) + " is nowhere. ";
  }
  const std::size_t rest = found.ranking.pages.size() - found.ranking.complete;
  if (found.ranking.complete > 0)
    said += counted(found.ranking.complete, "page", "pages") + " for " + quoted(query) +
            (rest > 0 ? ", and " + std::to_string(rest) + " with most of the words." : ".");
  else
    said += "Nothing holds all the words of " + quoted(query) + "." +
            (rest > 0 ? " " + counted(rest, "page holds", "pages hold") + " some of them." : "");
  return said;
}

}  // namespace

std::optional<SearchHits> search_hits(const std::string& root, const std::string& query,
                                      const std::vector<std::string>& manuals) {
  const std::string folder = root + "/" + olh_search::kIndexFolder;
  const std::optional<olh_search::IndexHead> head = olh_search::head_in(piece_at(folder + "/head.js"));
  if (!head) return std::nullopt;
  const olh_search::LoadPiece load = [&](const std::string& name) {
    return piece_at(folder + "/" + head->folder + "/" + name + ".js");
  };
  SearchHits found;
  found.root = root;
  found.ranking = olh_search::find(*head, load, query, manuals);
  found.hits = olh_search::hits_of(*head, load, found.ranking, 0, kHits);
  return found;
}

std::vector<std::string> documents_of_portal(const std::string& root, const std::string& portal) {
  std::string list = root + "/tomedecks/";
  list.append(portal).append("/js/doclist.js");
  std::vector<std::string> names;
  for (const ListedItem& item : items_in_list(olh_viewers::content_of(list))) names.push_back(item.name);
  return names;
}

HitCall call_for(const olh_search::Hit& hit) {
  if (is_pdf(hit)) return {hit.manual + ".pdf", ""};
  return {hit.manual, hit.section.topic.empty() ? hit.page.topic : hit.section.topic};
}

std::string as_text(const SearchHits& found, const std::string& query) {
  std::string text = outcome(found, query) + "\n";
  std::size_t number = 0;
  for (const olh_search::Hit& hit : found.hits) {
    text += "\n" + std::to_string(++number) + ". " + hit.page.title +
            (has_heading(hit) ? ": " + hit.section.heading : "") + "  (" + hit.manual_title + ")\n";
    text += "   " + file_of(found, hit) + "\n";
    if (!hit.section.text.empty()) text += "   " + excerpt(hit.section.text, found.ranking) + "\n";
  }
  return olh_viewers::visible_page(text);
}

nlohmann::json as_json(const SearchHits& found) {
  nlohmann::json all = nlohmann::json::array();
  for (const olh_search::Hit& hit : found.hits)
    all.push_back({{"document", call_for(hit).document},
                   {"topic", text_or_null(call_for(hit).topic)},
                   {"title", hit.page.title},
                   {"heading", has_heading(hit) ? nlohmann::json(hit.section.heading) : nlohmann::json()},
                   {"file", file_of(found, hit)},
                   {"excerpt", excerpt(hit.section.text, found.ranking)}});
  return all;
}

}  // namespace olh
