// How much each stem says of a section or page.
//
// Knows    how much an occurrence counts in a title, heading, name, link or text, and what a longer one takes off (BM25).
// Not      what a word is, and where shares are kept (vocabulary).
// For      index_maker.
#ifndef OLH_TOOLS_INDEX_STEM_SHARES_H
#define OLH_TOOLS_INDEX_STEM_SHARES_H

#include <array>
#include <cstdint>
#include <vector>

#include "vocabulary.h"

namespace olh_index {

enum Field { kTitle, kHeading, kName, kLink, kText, kFields };
enum class Stands : std::uint8_t { kAsWord, kAsSymbol, kAsMeaning };

class StemShares {
 public:
  // The page that is counted from here on; what the text of an aside says counts less.
  void begin_page(bool is_aside) { is_aside_ = is_aside; }
  // Words of the field, whether their stems are counted or not.
  void lengthen(Field field, std::uint32_t words) { lengths_[field] += words; }
  void count(StemNumber stem, Field field, Stands as) {
    if (stem >= counts_.size()) counts_.resize(2 * std::size_t{stem} + 1);
    Counts& counts = counts_[stem];
    if (!counts.is_found) found_.push_back(stem);
    counts.is_found = true;
    counts.is_symbol |= as == Stands::kAsSymbol;
    counts.is_meaning |= as == Stands::kAsMeaning;
    std::uint16_t& count = counts.of_fields[field];
    if (count < kMostCounted) ++count;
  }

  // Calls with each stem that was counted and its share, at most kMostInOneCharacter; then nothing is counted any more.
  template <typename Call>
  void take_of_section(Call call) {
    take(&StemShares::share_of_section, call);
  }
  // The same of a page's title, and of the links to it.
  template <typename Call>
  void take_of_page(Call call) {
    take(&StemShares::share_of_page, call);
  }

 private:
  static constexpr std::uint16_t kMostCounted = 0xffff;  // more says nothing more

  // Of 16 bytes: each is looked for in memory.
  struct alignas(16) Counts {
    std::array<std::uint16_t, kFields> of_fields{};
    bool is_found = false;
    bool is_symbol = false;
    bool is_meaning = false;
  };

  template <typename Call>
  void take(std::uint32_t (StemShares::*share)(const Counts&) const, Call call) {
    weigh_fields();
    for (const StemNumber stem : found_) {
      call(stem, (this->*share)(counts_[stem]));
      counts_[stem] = {};
    }
    found_.clear();
    lengths_ = {};
  }

  void weigh_fields();
  double part_of(const Counts& counts, Field field) const { return counts.of_fields[field] * weights_[field]; }
  std::uint32_t share_of_section(const Counts& counts) const;
  std::uint32_t share_of_page(const Counts& counts) const;

  std::vector<Counts> counts_;  // of all stems, none of them found at first
  std::vector<StemNumber> found_;
  std::array<std::uint32_t, kFields> lengths_{};
  std::array<double, kFields> weights_{};  // of an occurrence in a field of that length
  bool is_aside_ = false;
};

}  // namespace olh_index

#endif
