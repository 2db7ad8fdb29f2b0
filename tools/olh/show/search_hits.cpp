#include "search_hits.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "files.h"
#include "find.h"
#include "pdf_places.h"
#include "shared.h"
#include "words_in_text.h"

namespace olh {

namespace {

// A word may be in all sections of an index; texts are cut to pieces, near words are 30,000 at most. Both take many times
// more memory than room in a file.
constexpr std::size_t kMostBytesOfPiece = std::size_t{16} * 1024 * 1024;
constexpr std::size_t kMostBytesOfTexts = std::size_t{1024} * 1024;
constexpr std::size_t kMostBytesOfNearWords = std::size_t{2} * 1024 * 1024;
constexpr std::size_t kBefore = 30;  // bytes of a text before the first word of the query
constexpr std::size_t kExcerpt = 200;
constexpr std::size_t kLongestWord = 40;  // that an excerpt is not cut in

std::string piece_at(const std::string& path, std::size_t most = kMostBytesOfPiece) {
  return olh_viewers::text_of_file(path, most).value_or("");
}

std::size_t most_bytes_of(const std::string& piece) {
  if (piece == "near") return kMostBytesOfNearWords;
  return piece.starts_with("texts_") ? kMostBytesOfTexts : kMostBytesOfPiece;
}

bool is_marked(std::string_view word, const olh_search::Ranking& ranking) {
  return std::ranges::any_of(ranking.words, [&](const olh_search::LookedForWord& one) {
    return !one.mark.empty() && word.starts_with(one.mark);
  });
}

// Where the first word of the query is in the text; 0 without one.
std::size_t first_word(std::string_view text, const olh_search::Ranking& ranking) {
  std::optional<std::size_t> first;
  olh_search::Symbol symbol;
  olh_search::each_token(text, [&](std::string_view token) {
    if (first) return;
    olh_search::read_symbol(token, symbol);
    if (std::ranges::any_of(symbol.parts, [&](std::string_view part) { return is_marked(part, ranking); }))
      first = static_cast<std::size_t>(token.data() - text.data());
  });
  return first.value_or(0);
}

// The beginning of a text that is cut: behind its last blank, or, where words have none between them, anywhere.
std::string_view cut_behind_blank(std::string_view text, std::size_t most) {
  const std::string_view part = olh_search::cut_to(text, most);
  const std::size_t blank = part.size() < text.size() ? part.rfind(' ') : std::string_view::npos;
  return blank != std::string_view::npos && blank + kLongestWord > part.size() ? part.substr(0, blank + 1) : part;
}

std::string excerpt(std::string_view text, const olh_search::Ranking& ranking) {
  const std::size_t at = first_word(text, ranking);
  const std::size_t begin = at < 2 * kBefore ? 0 : cut_behind_blank(text, at - kBefore).size();
  std::string_view part = cut_behind_blank(text.substr(begin), kExcerpt);
  const bool is_cut = begin + part.size() < text.size();
  if (is_cut && part.ends_with(' ')) part.remove_suffix(1);
  return (begin > 0 ? "... " : "") + std::string(part) + (is_cut ? " ..." : "");
}

bool has_heading(const olh_search::Hit& hit) {
  return !hit.section.heading.empty() && !hit.section.anchor.empty() && hit.section.heading != hit.page.title;
}

std::string file_of(const SearchHits& found, const olh_search::Hit& hit) {
  return found.root + "/" + hit.page.address + (hit.section.anchor.empty() ? "" : "#" + hit.section.anchor);
}

// The number in "page=3"; null elsewhere.
nlohmann::json page_of(const ListedHit& hit) {
  const auto page = hit.is_pdf ? olh_viewers::page_named_by(hit.place) : std::nullopt;
  return page ? nlohmann::json(*page) : nlohmann::json();
}

std::string folder_of_indexes(const std::string& root) { return root + "/" + olh_search::kIndexFolder; }

std::optional<olh_search::IndexHead> head_at(const std::string& root) {
  return olh_search::head_in(piece_at(folder_of_indexes(root) + "/head.js"));
}

// A query as it is shown: one with a phrase has quotation marks already.
std::string shown(const std::string& query) { return query.find('"') == std::string::npos ? quoted(query) : query; }

std::string outcome(const SearchHits& found, const std::string& query) {
  if (found.ranking.pages.empty()) return "Nothing found for " + shown(query) + ".";
  std::string said;
  for (const olh_search::LookedForWord& word : found.ranking.words) {
    if (word.taken == word.asked) continue;
    if (!word.taken.empty()) said += "Results for " + quoted(word.taken) + ". ";
    said += quoted(word.asked) + " was not found. ";
  }
  const std::size_t rest = found.ranking.pages.size() - found.ranking.complete;
  if (found.ranking.complete > 0)
    said += counted(found.ranking.complete, "page", "pages") + " for " + shown(query) +
            (rest > 0 ? ", and " + std::to_string(rest) + " with most of the words." : ".");
  else
    said += "No page has all the words of " + shown(query) + "." +
            (rest > 0 ? " " + counted(rest, "page has", "pages have") + " some of them." : "");
  return said;
}

// What to do with the results, and how to see those that are not listed.
std::string what_next(const SearchHits& found) {
  if (found.hits.empty()) return "";
  const std::size_t all = found.ranking.pages.size();
  return "\nTo open one: olh show NUMBER." +
         (all > found.hits.size() ? " To list all " + std::to_string(all) + ": --limit " + std::to_string(all) + "."
                                  : "") +
         "\n";
}

}  // namespace

std::optional<SearchHits> search_hits(const std::string& root, const std::string& query,
                                      const std::vector<std::string>& manuals, std::size_t wanted) {
  const std::optional<olh_search::IndexHead> head = head_at(root);
  if (!head) return std::nullopt;
  const olh_search::LoadPiece load = [&](const std::string& name) {
    return piece_at(folder_of_indexes(root) + "/" + head->folder + "/" + name + ".js", most_bytes_of(name));
  };
  SearchHits found;
  found.root = root;
  found.index = head->folder;
  found.ranking = olh_search::find(*head, load, query, manuals);
  found.hits = olh_search::hits_of(*head, load, found.ranking, 0, wanted);
  return found;
}

std::vector<std::string> documents_of_portal(const std::string& root, const std::string& portal) {
  std::string list = root + "/tomedecks/";
  list.append(portal).append("/js/doclist.js");
  std::vector<std::string> names;
  for (const ListedItem& item : items_in_list(olh_viewers::content_of(list))) names.push_back(item.name);
  return names;
}

ListedHit listed(const olh_search::Hit& hit) {
  const bool is_pdf = hit.page.address.starts_with("pdfdocs/");
  const std::string& topic = hit.section.topic.empty() ? hit.page.topic : hit.section.topic;
  const std::string title = hit.page.title + (has_heading(hit) ? ": " + hit.section.heading : "");
  const bool is_in_topic = !is_pdf && !hit.section.anchor.empty() && hit.section.topic.empty();
  return {title,  hit.manual + (is_pdf ? ".pdf" : ""), is_pdf ? "" : topic, hit.section.anchor,
          is_pdf, is_in_topic ? hit.page.address : ""};
}

std::string index_at(const std::string& root) {
  const std::optional<olh_search::IndexHead> head = head_at(root);
  return head ? head->folder : "";
}

std::string as_text(const SearchHits& found, const std::string& query) {
  std::string text = outcome(found, query) + "\n";
  std::size_t number = 0;
  for (const olh_search::Hit& hit : found.hits) {
    text += "\n" + std::to_string(++number) + ". " + listed(hit).title + "  (" + hit.manual_title + ")\n";
    text += "   " + file_of(found, hit) + "\n";
    if (!hit.section.text.empty()) text += "   " + excerpt(hit.section.text, found.ranking) + "\n";
  }
  return olh_viewers::visible_page(text + what_next(found));
}

nlohmann::json as_json(const SearchHits& found) {
  nlohmann::json all = nlohmann::json::array();
  for (const olh_search::Hit& hit : found.hits) {
    const ListedHit shown = listed(hit);
    all.push_back({{"number", all.size() + 1},
                   {"document", shown.document},
                   {"topic", text_or_null(shown.topic)},
                   {"page", page_of(shown)},
                   {"title", hit.page.title},
                   {"heading", has_heading(hit) ? nlohmann::json(hit.section.heading) : nlohmann::json()},
                   {"file", file_of(found, hit)},
                   {"excerpt", excerpt(hit.section.text, found.ranking)}});
  }
  return all;
}

}  // namespace olh
