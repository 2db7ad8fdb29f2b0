#include "pair_search.h"

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#ifdef __x86_64__
#include <cpuid.h>
#include <immintrin.h>
#endif

namespace olh {

namespace {

using Pair = std::uint16_t;
constexpr Pair pair(char first, char second) noexcept { return std::bit_cast<Pair>(std::array{first, second}); }

// Bytes are looked at in pairs, each byte once: in some pair "pdf" shows as "pd" or, one byte further on, as "df". This
// is what both have in common, and a pair of random bytes has it once in 8,192 times.
constexpr auto kCommonBits = static_cast<Pair>(~(pair('p', 'd') ^ pair('d', 'f')));
constexpr auto kCommon = static_cast<Pair>(pair('p', 'd') & kCommonBits);

// ---- anywhere: vectors of 16 bytes -------------------------------------------------------------------------------

using Pairs [[gnu::vector_size(16)]] = Pair;
using Hits = decltype(Pairs() == Pairs());

std::size_t search_16(const char* strides, std::size_t count) noexcept {
  for (std::size_t stride = 0; stride < count; ++stride) {
    Hits hits{};
    for (std::size_t i = 0; i < kStride; i += sizeof(Pairs)) {
      Pairs pairs;
      std::memcpy(&pairs, strides + stride * kStride + i, sizeof pairs);
      hits |= (pairs & kCommonBits) == kCommon;
    }
    if (std::bit_cast<std::array<std::uint64_t, 2>>(hits) != std::array<std::uint64_t, 2>{}) return stride;
  }
  return count;
}

// ---- on x86-64, when processor and system have them: 32 and 64 bytes ---------------------------------------------

#ifdef __x86_64__

[[gnu::target("avx2")]] std::size_t search_32(const char* strides, std::size_t count) noexcept {
  const __m256i bits = _mm256_set1_epi16(static_cast<short>(kCommonBits));
  const __m256i common = _mm256_set1_epi16(static_cast<short>(kCommon));
  for (std::size_t stride = 0; stride < count; ++stride) {
    __m256i hits = _mm256_setzero_si256();
    for (std::size_t i = 0; i < kStride; i += sizeof hits) {
      __m256i pairs;
      std::memcpy(&pairs, strides + stride * kStride + i, sizeof pairs);
      hits = _mm256_or_si256(hits, _mm256_cmpeq_epi16(_mm256_and_si256(pairs, bits), common));
    }
    if (_mm256_testz_si256(hits, hits) == 0) return stride;
  }
  return count;
}

[[gnu::target("avx512bw")]] std::size_t search_64(const char* strides, std::size_t count) noexcept {
  const __m512i bits = _mm512_set1_epi16(static_cast<short>(kCommonBits));
  const __m512i common = _mm512_set1_epi16(static_cast<short>(kCommon));
  for (std::size_t stride = 0; stride < count; ++stride) {
    __mmask32 hits = 0;
    for (std::size_t i = 0; i < kStride; i += sizeof bits) {
      __m512i pairs;
      std::memcpy(&pairs, strides + stride * kStride + i, sizeof pairs);
      hits |= _mm512_cmpeq_epi16_mask(_mm512_and_si512(pairs, bits), common);
    }
    if (hits != 0) return stride;
  }
  return count;
}

// What the system keeps of the vectors when it changes between programs: bits 1 and 2 for 32 bytes, 5 to 7 for 64.
[[gnu::target("xsave")]] bool keeps(std::uint64_t registers) noexcept {
  return (_xgetbv(0) & registers) == registers;
}

// Asked of the processor itself: the compiler's own question costs every program a constructor.
std::size_t searches_at_hand() noexcept {
  unsigned a = 0;
  unsigned b = 0;
  unsigned c = 0;
  unsigned d = 0;
  if (__get_cpuid(1, &a, &b, &c, &d) == 0 || (c & bit_OSXSAVE) == 0) return 1;
  if (__get_cpuid_count(7, 0, &a, &b, &c, &d) == 0 || (b & bit_AVX2) == 0 || !keeps(0x06)) return 1;
  return (b & bit_AVX512BW) == 0 || !keeps(0xe6) ? 2 : 3;
}

constexpr PairSearch kSearches[] = {search_16, search_32, search_64};

#else

std::size_t searches_at_hand() noexcept { return 1; }

constexpr PairSearch kSearches[] = {search_16};

#endif

}  // namespace

std::span<const PairSearch> pair_searches() noexcept {
  static const std::size_t count = searches_at_hand();
  return std::span(kSearches).first(count);
}

}  // namespace olh
