#include "stem_shares.h"

#include <algorithm>
#include <cmath>

#include "packed_numbers.h"
#include "points.h"

namespace olh_index {

using olh_search::kMostInOneCharacter;
using olh_search::kShareOfLinks;

namespace {

// How much an occurrence counts, how long the field is usually, and how much a longer one takes off. In the order of the
// fields.
struct Weights {
  double weight;
  double usual_words;
  double by_length;
};
constexpr Weights kWeights[kFields] = {{6, 4, 0.5}, {6, 4, 0.5}, {4, 3, 0.4}, {0.8, 30, 0.5}, {1, 120, 0.6}};
constexpr double kSaturation = 1.6;
constexpr double kSymbolInText = 0.4;  // of a symbol's share where it is only mentioned
constexpr double kMeaning = 0.5;       // of another word's share that means the same
constexpr double kMeaningInTitle = 0.7;
constexpr double kAside = 0.6;  // of the text of a page that mentions everything

double saturated(double sum) { return sum / (sum + kSaturation) * kMostInOneCharacter; }

std::uint32_t rounded(double part, std::uint32_t least, std::uint32_t most) {
  return std::clamp(static_cast<std::uint32_t>(std::lround(part)), least, most);
}

}  // namespace

void StemShares::weigh_fields() {
  for (std::size_t field = 0; field < kFields; ++field) {
    const Weights& weights = kWeights[field];
    weights_[field] =
        weights.weight / (1 - weights.by_length + weights.by_length * lengths_[field] / weights.usual_words);
  }
}

// A symbol in a heading or name is what stands there; elsewhere it is only used.
std::uint32_t StemShares::share_of_section(const Counts& counts) const {
  const double named = part_of(counts, kHeading) + part_of(counts, kName);
  if (counts.is_symbol && named > 0) return kMostInOneCharacter;
  const double part = saturated(named + part_of(counts, kLink) + part_of(counts, kText) * (is_aside_ ? kAside : 1));
  const double weighs = counts.is_symbol ? kSymbolInText : counts.is_meaning ? kMeaning : 1;
  return rounded(part * weighs, 1, kMostInOneCharacter);
}

std::uint32_t StemShares::share_of_page(const Counts& counts) const {
  const double part = saturated(part_of(counts, kTitle) + part_of(counts, kLink));
  if (counts.is_meaning) return rounded(part * kMeaningInTitle, 1, kShareOfLinks);
  return counts.of_fields[kTitle] > 0 ? rounded(part, kShareOfLinks + 1, kMostInOneCharacter)
                                      : rounded(part, 1, kShareOfLinks);
}

}  // namespace olh_index
