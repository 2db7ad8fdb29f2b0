// The first sieve of the title search: which strides of a large file may hold the word "pdf".
//
// Knows    how the word shows in pairs of bytes, and with which vectors this processor compares most of them at once.
// Not      what has to follow the word (title_scan).
// For      title_scan, which looks at what is left: of a compressed document a bit more than one stride in a hundred.
#ifndef OLH_DMERGE_PAIR_SEARCH_H
#define OLH_DMERGE_PAIR_SEARCH_H

#include <cstddef>
#include <span>

namespace olh {

inline constexpr std::size_t kStride = 256;

// The first of `count` strides that may hold the d of "pdf", whose p may end the stride before; `count` when none does.
using PairSearch = std::size_t (*)(const char* strides, std::size_t count) noexcept;

// All searches that this processor can make, with the same results; the last one is the fastest.
std::span<const PairSearch> pair_searches() noexcept;

}  // namespace olh

#endif
