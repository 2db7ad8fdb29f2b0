#include "index_search.h"

#include <algorithm>
#include <bit>
#include <map>

#include "near_words.h"
#include "packed_numbers.h"
#include "points.h"
#include "query.h"
#include "word_groups.h"
#include "words_in_text.h"

namespace olh_search {

namespace {

constexpr std::size_t kMostNear = 3;
constexpr std::size_t kPiecesForPhrases = 10;
constexpr std::size_t kShortestBeginning = 4;  // bytes

bool is_among(const std::string& word, const std::string& words) {
  return (" " + words + " ").find(" " + word + " ") != std::string::npos;
}

// The groups of a word that say something of the manuals that are searched.
class Words {
 public:
  Words(const IndexHead& head, const LoadPiece& load, const Points& points)
      : head_(head), load_(load), points_(points) {}

  std::vector<WordGroup> groups_of(const std::string& word, Wanted wanted = Wanted::kWord) {
    std::vector<WordGroup> groups;
    for (const std::size_t piece : wanted == Wanted::kBeginning ? pieces_of_beginning(word) : pieces_of(word))
      for (WordGroup& group : groups_with(word, packed_groups_of(piece), wanted))
        if (points_.are_given_by(group)) groups.push_back(std::move(group));
    return groups;
  }

  // A symbol that is nowhere is the beginning of others, as a person types it: `taken` is the first of these, else "".
  struct Whole {
    std::string asked;
    std::string taken;
    std::vector<WordGroup> groups;
  };
  Whole whole_of(const std::string& asked) {
    Whole whole = {asked, "", groups_of(asked)};
    if (!whole.groups.empty() || asked.size() < kShortestBeginning) return whole;
    whole.groups = groups_of(asked, Wanted::kBeginning);
    if (whole.groups.size() > kMostNear) whole.groups.resize(kMostNear);
    if (whole.groups.empty()) return whole;
    const std::vector<std::string> words = words_with_blanks(whole.groups.front().words);
    const auto found = std::ranges::find_if(words, [&](const std::string& word) { return word.starts_with(asked); });
    if (found != words.end()) whole.taken = *found;
    return whole;
  }

  // Of a word near to this one, which becomes that; none when there is none.
  std::vector<WordGroup> groups_near(std::string& word) {
    if (near_.empty()) near_ = near_words_in(load_("near"));
    for (const std::string& other : near_words(word, near_, kMostNear)) {
      std::vector<WordGroup> groups = groups_of(other);
      if (groups.empty()) continue;
      word = other;
      return groups;
    }
    word.clear();
    return {};
  }

 private:
  const std::string& packed_groups_of(std::size_t number) {
    const auto [found, is_new] = pieces_.try_emplace(number);
    if (is_new) found->second = packed_groups_in(load_("words_" + std::to_string(number)));
    return found->second;
  }
  std::vector<std::size_t> pieces_of(const std::string& word) const {
    std::vector<std::size_t> pieces;
    for (std::size_t at = 0; at < head_.meant_words.size(); ++at)
      if (is_among(word, head_.meant_words[at])) pieces.push_back(at);
    if (!pieces.empty()) return pieces;
    return {head_.meant_words.size() + place_of(word)};
  }
  // Of words that begin so: one, or two where a piece ends before them.
  std::vector<std::size_t> pieces_of_beginning(const std::string& word) const {
    const std::size_t at = place_of(word);
    std::vector<std::size_t> pieces = {head_.meant_words.size() + at};
    const bool goes_on = at + 1 < head_.first_words.size() && head_.first_words[at + 1].starts_with(word);
    if (goes_on) pieces.push_back(pieces.front() + 1);
    return pieces;
  }
  std::size_t place_of(const std::string& word) const {
    const auto after = std::ranges::upper_bound(head_.first_words, word);
    return after == head_.first_words.begin() ? 0 : static_cast<std::size_t>(after - head_.first_words.begin()) - 1;
  }

  const IndexHead& head_;
  const LoadPiece& load_;
  const Points& points_;
  std::map<std::size_t, std::string> pieces_;
  std::vector<std::string> near_;
};

// The letters that the words of a stem have in common with the one that was asked for; "int", which means the same as
// "integers", is none of them: few letters have a short ending.
std::string mark_of(const std::string& word, const std::vector<WordGroup>& groups) {
  constexpr std::size_t kShortest = 3;
  constexpr std::size_t kLongestEnding = 5;
  std::size_t same = word.size();
  for (const WordGroup& group : groups)
    for (const std::string& other : words_with_blanks(group.words)) {
      const auto here = static_cast<std::size_t>(std::ranges::mismatch(word, other).in1 - word.begin());
      const std::size_t longest_ending = here > kShortest ? kLongestEnding : 1;
      if (here >= kShortest && word.size() - here <= longest_ending) same = std::min(same, here);
    }
  return std::string(cut_to(word, same));
}

std::uint32_t piece_of_section(const IndexHead& head, std::uint32_t section) {
  const auto after = std::ranges::upper_bound(head.first_of_texts, section);
  return static_cast<std::uint32_t>(after - head.first_of_texts.begin() - 1);
}

// The texts of sections, a piece at a time.
class Texts {
 public:
  Texts(const IndexHead& head, const LoadPiece& load) : head_(head), load_(load) {}

  const TextPiece& piece_with(std::uint32_t section) {
    const auto [found, is_new] = pieces_.try_emplace(piece_of_section(head_, section));
    if (is_new) found->second = texts_in(load_("texts_" + std::to_string(found->first)));
    return found->second;
  }
  bool has_piece_with(std::uint32_t section) const { return pieces_.contains(piece_of_section(head_, section)); }
  std::size_t pieces() const { return pieces_.size(); }

  const IndexedSection* section(std::uint32_t number) {
    const TextPiece& piece = piece_with(number);
    const std::size_t at = number - head_.first_of_texts[piece_of_section(head_, number)];
    return at < piece.sections.size() ? &piece.sections[at] : nullptr;
  }

 private:
  const IndexHead& head_;
  const LoadPiece& load_;
  std::map<std::uint32_t, TextPiece> pieces_;
};

bool has_phrases(const IndexedSection& section, const std::vector<std::vector<std::string>>& phrases) {
  const std::vector<std::string> heading = words_in_order(section.heading);
  const std::vector<std::string> text = words_in_order(section.text);
  const auto holds = [](const std::vector<std::string>& words, const std::vector<std::string>& phrase) {
    return phrase.empty() || std::search(words.begin(), words.end(), phrase.begin(), phrase.end()) != words.end();
  };
  return std::ranges::all_of(
      phrases, [&](const std::vector<std::string>& phrase) { return holds(text, phrase) || holds(heading, phrase); });
}

// Leaves the pages that have the phrases, as far as that may be looked up.
void keep_phrases(const IndexHead& head, const LoadPiece& load, const Query& query, const Points& points,
                  Ranking& ranking) {
  Texts texts(head, load);
  std::vector<RankedPage> kept;
  for (RankedPage ranked : ranking.pages) {
    for (const std::uint32_t section : points.sections_with_all(ranked.page)) {
      if (!texts.has_piece_with(section) && texts.pieces() == kPiecesForPhrases) {
        ranking.is_cut = true;
        continue;
      }
      const IndexedSection* read = texts.section(section);
      if (read == nullptr || !has_phrases(*read, query.phrases)) continue;
      ranked.section = section;
      kept.push_back(ranked);
      break;
    }
  }
  ranking.pages = std::move(kept);
  ranking.complete = ranking.pages.size();
}

}  // namespace

Ranking find(const IndexHead& head, const LoadPiece& load, const std::string& text,
             const std::vector<std::string>& manuals) {
  const Query query = query_in(text, head.common);
  Points points(head, manuals, query.words.size());
  Words words(head, load, points);
  Ranking ranking;
  std::vector<Words::Whole> wholes;
  for (const std::string& whole : query.wholes) wholes.push_back(words.whole_of(whole));
  for (const std::string& word : query.words) {
    LookedForWord looked_for = {word, word, ""};
    std::vector<WordGroup> groups = words.groups_of(word);
    const auto begun = std::ranges::find_if(
        wholes, [&](const Words::Whole& one) { return !one.taken.empty() && one.asked.ends_with(word); });
    if (begun != wholes.end()) {
      if (groups.empty()) looked_for.taken = begun->taken;
      groups.insert(groups.end(), begun->groups.begin(), begun->groups.end());
    } else if (groups.empty()) {
      groups = words.groups_near(looked_for.taken);
    }
    const std::uint32_t bit = 1U << ranking.words.size();
    for (const WordGroup& group : groups) points.add(group, bit);
    points.add_titles_of_manuals(looked_for.taken.empty() ? word : looked_for.taken, bit);
    looked_for.mark = mark_of(looked_for.taken, groups);
    ranking.words.push_back(std::move(looked_for));
  }
  for (const Words::Whole& whole : wholes)
    for (const WordGroup& group : whole.groups) points.add(group, 0);
  ranking.pages = points.ranked();
  if (!query.phrases.empty()) {
    keep_phrases(head, load, query, points, ranking);
  } else {
    const auto all = (1U << ranking.words.size()) - 1;
    ranking.complete = static_cast<std::size_t>(std::ranges::count(ranking.pages, all, &RankedPage::words));
  }
  return ranking;
}

std::vector<Hit> hits_of(const IndexHead& head, const LoadPiece& load, const Ranking& ranking, std::size_t first,
                         std::size_t count) {
  Texts texts(head, load);
  std::vector<Hit> hits;
  for (std::size_t at = first; at < std::min(first + count, ranking.pages.size()); ++at) {
    const RankedPage& ranked = ranking.pages[at];
    const TextPiece& piece = texts.piece_with(ranked.section);
    const IndexedSection* section = texts.section(ranked.section);
    const auto page = std::ranges::find(piece.pages, ranked.page, &IndexedPage::number);
    if (section == nullptr || page == piece.pages.end()) continue;
    const ManualInIndex& manual = manual_of_page(head, ranked.page);
    hits.push_back({manual.name, manual.title, *page, *section});
  }
  return hits;
}

}  // namespace olh_search
