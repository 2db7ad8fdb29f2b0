#include "points.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "packed_numbers.h"
#include "query.h"

namespace olh_search {

namespace {

// Of a page: its best section, its title, and all that its sections say.
constexpr std::uint32_t kOfSection = 5;
constexpr std::uint32_t kOfTitle = 5;
constexpr std::uint32_t kOfSections = 2;
constexpr std::size_t kFewWords = 2;

// Calls with each number of a list of postings and its share; stops when the call says so.
template <typename Call>
void each_posting(const std::string& packed, Call call) {
  std::uint32_t at = 0;
  for (PackedNumbers numbers(packed); !numbers.at_end();) {
    at += numbers.next();
    if (!call(at, numbers.next_character())) return;
  }
}

}  // namespace

std::uint32_t weight_of_word(std::uint32_t all_sections, std::uint32_t sections) {
  const double rest = all_sections - std::min(sections, all_sections) + 0.5;
  return static_cast<std::uint32_t>(std::max(1L, std::lround(16 * std::log(1 + rest / (sections + 0.5)))));
}

const ManualInIndex& manual_of_page(const IndexHead& head, std::uint32_t page) {
  std::uint32_t pages = 0;
  for (const ManualInIndex& manual : head.manuals)
    if ((pages += manual.pages) > page) return manual;
  return head.manuals.back();
}

Points::Points(const IndexHead& head, const std::vector<std::string>& manuals, std::size_t words)
    : head_(head), weights_(words), words_of_manuals_(head.manuals.size()), sections_(head.sections) {
  for (const ManualInIndex& manual : head.manuals)
    is_searched_.insert(is_searched_.end(), manual.pages,
                        manuals.empty() || std::ranges::find(manuals, manual.name) != manuals.end());
  pages_.resize(is_searched_.size());
  page_of_section_.reserve(head.sections);
  for (std::uint32_t page = 0; page < pages_.size(); ++page)
    page_of_section_.resize(head.first_sections[page + 1], page);
}

bool Points::are_given_by(const WordGroup& group) const {
  bool found = false;
  each_posting(group.titles, [&](std::uint32_t page, std::uint32_t) { return !(found = is_searched(page)); });
  if (!found)
    each_posting(group.postings, [&](std::uint32_t section, std::uint32_t) {
      return section < page_of_section_.size() && !(found = is_searched(page_of_section_[section]));
    });
  return found;
}

void Points::add(const WordGroup& group, std::uint32_t bit) {
  if (bit != 0) {
    std::uint32_t& weight = weights_[static_cast<std::size_t>(std::countr_zero(bit))];
    weight = std::max(weight, group.weight);
  }
  each_posting(group.titles, [&](std::uint32_t page, std::uint32_t share) {
    if (!is_searched(page)) return page < pages_.size();
    OfPage& of_page = pages_[page];
    of_page.title += group.weight * share;
    of_page.words |= bit;
    of_page.words_of_title |= bit;
    if (share > kShareOfLinks) of_page.words_in_title |= bit;
    return true;
  });
  std::uint32_t last = 0;
  std::uint32_t most = 0;
  each_posting(group.postings, [&](std::uint32_t section, std::uint32_t share) {
    if (section >= sections_.size()) return false;
    const std::uint32_t page = page_of_section_[section];
    if (!is_searched(page)) return true;
    const std::uint32_t points = group.weight * share;
    sections_[section].points += points;
    sections_[section].words |= bit;
    pages_[page].words |= bit;
    if (page != last) most = 0;
    last = page;
    if (points <= most) return true;
    pages_[page].sections += points - most;
    most = points;
    return true;
  });
}

void Points::add_titles_of_manuals(const std::string& word, std::uint32_t bit) {
  for (std::size_t at = 0; at < head_.manuals.size(); ++at) {
    const std::vector<std::string> title = words_in_order(head_.manuals[at].title);
    if (std::ranges::find(title, word) != title.end()) words_of_manuals_[at] |= bit;
  }
}

// How much words count together, of which each has a bit.
std::uint32_t Points::weight_of(std::uint32_t words) const {
  std::uint32_t sum = 0;
  for (std::size_t at = 0; at < weights_.size(); ++at) sum += (words >> at & 1U) * weights_[at];
  return sum;
}

RankedPage Points::ranked_page(std::uint32_t page, std::uint32_t of_manual) const {
  const OfPage& of_page = pages_[page];
  const std::uint32_t first = head_.first_sections[page];
  std::uint32_t best = first;
  std::uint32_t most =
      sections_[first].points + of_page.title / 2;  // what a title says stands at the page's beginning
  for (std::uint32_t at = first + 1; at < head_.first_sections[page + 1]; ++at)
    if (sections_[at].points > most) most = sections_[best = at].points;
  const std::uint32_t words = of_page.words | of_manual;
  const std::uint64_t points =
      kOfSection * sections_[best].points + kOfTitle * of_page.title + kOfSections * of_page.sections;
  return {page, best, words, points * weight_of(words) * (weight_of(~0U) + weight_of(of_page.words_in_title))};
}

std::vector<RankedPage> Points::ranked() const {
  std::vector<RankedPage> ranked;
  std::uint32_t page = 0;
  for (std::size_t manual = 0; manual < head_.manuals.size(); ++manual)
    for (const std::uint32_t end = page + head_.manuals[manual].pages; page < end; ++page) {
      if (pages_[page].words == 0 || head_.first_sections[page] == head_.first_sections[page + 1]) continue;
      const RankedPage one = ranked_page(page, words_of_manuals_[manual]);
      if (2 * static_cast<std::size_t>(std::popcount(one.words)) >= weights_.size()) ranked.push_back(one);
    }
  std::ranges::stable_sort(ranked, [this](const RankedPage& a, const RankedPage& b) {
    const int more = weights_.size() > kFewWords ? 0 : std::popcount(a.words) - std::popcount(b.words);
    return more != 0 ? more > 0 : a.points > b.points;
  });
  return ranked;
}

std::vector<std::uint32_t> Points::sections_with_all(std::uint32_t page) const {
  const std::uint32_t all = (1U << weights_.size()) - 1;
  std::vector<std::uint32_t> sections;
  for (std::uint32_t at = head_.first_sections[page]; at < head_.first_sections[page + 1]; ++at)
    if (sections_[at].words == all ||
        (at == head_.first_sections[page] && (sections_[at].words | pages_[page].words_of_title) == all))
      sections.push_back(at);
  return sections;
}

}  // namespace olh_search
