// How well pages and sections answer, as whole numbers: the pages of a root come to the same ones.
//
// Knows    what a word gives to the sections and the page where it stands, and what makes the order of pages.
// Not      which words are looked for, and where their postings come from (index_search).
// For      index_search; olh-index has the two scales of it.
#ifndef OLH_TOOLS_SEARCH_POINTS_H
#define OLH_TOOLS_SEARCH_POINTS_H

#include <cstdint>
#include <string>
#include <vector>

#include "index_pieces.h"
#include "index_search.h"
#include "word_groups.h"

namespace olh_search {

// A share of more than this, of a page's title, says that the word stands in the title itself.
inline constexpr std::uint32_t kShareOfLinks = 40;

// How much a word counts that is in so many of all sections.
std::uint32_t weight_of_word(std::uint32_t all_sections, std::uint32_t sections);

const ManualInIndex& manual_of_page(const IndexHead& head, std::uint32_t page);

class Points {
 public:
  // `manuals` are the names of those that are searched; all without one.
  Points(const IndexHead& head, const std::vector<std::string>& manuals, std::size_t words);

  // Whether a group stands anywhere in the manuals that are searched.
  bool are_given_by(const WordGroup& group) const;
  // Counts what the postings of a group give; `bit` is the word's, 0 for one that need not be there.
  void add(const WordGroup& group, std::uint32_t bit);
  // The title of a manual speaks for all its pages.
  void add_titles_of_manuals(const std::string& word, std::uint32_t bit);

  // Pages with at least half of the words. With one or two words those with all come first; a longer question is answered
  // best by points alone.
  std::vector<RankedPage> ranked() const;
  // The sections of a page that have all words, in their order.
  std::vector<std::uint32_t> sections_with_all(std::uint32_t page) const;

 private:
  bool is_searched(std::uint32_t page) const { return page < is_searched_.size() && is_searched_[page]; }
  RankedPage ranked_page(std::uint32_t page, std::uint32_t of_manual) const;
  std::uint32_t weight_of(std::uint32_t words) const;

  struct OfPage {
    std::uint32_t title = 0;     // points of the words of the title, and of links to the page
    std::uint32_t sections = 0;  // for each word, those of the section that has most
    std::uint32_t words = 0;
    std::uint32_t words_in_title = 0;
    std::uint32_t words_of_title = 0;  // those of links too
  };
  struct OfSection {
    std::uint32_t points = 0;
    std::uint32_t words = 0;
  };
  const IndexHead& head_;
  std::vector<std::uint32_t> weights_;  // of each word
  std::vector<bool> is_searched_;
  std::vector<std::uint32_t> page_of_section_;
  std::vector<std::uint32_t> words_of_manuals_;
  std::vector<OfPage> pages_;
  std::vector<OfSection> sections_;
};

}  // namespace olh_search

#endif
