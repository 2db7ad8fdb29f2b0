#include "title_scan.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "pair_search.h"
#include "script_line.h"

namespace olh {

namespace {

constexpr std::string_view kLibraryTitle = "QELAddBookVar(\"DocTitle\"";
constexpr std::string_view kTitleAttribute = "pdf:Title='";
constexpr std::string_view kTitleElement = "<pdf:Title>";
constexpr std::size_t kNone = std::string_view::npos;

// As string_view::find, but never slow on a text full of beginnings of the word.
std::size_t find_word(std::string_view text, std::string_view word, std::size_t from = 0) noexcept {
  const void* found = memmem(text.data() + from, text.size() - from, word.data(), word.size());
  return found == nullptr ? kNone : static_cast<std::size_t>(static_cast<const char*>(found) - text.data());
}

// The text at `begin` up to the closing character.
std::string_view text_until(std::string_view piece, std::size_t begin, char closing) {
  const char ends[] = {closing, '\n', '\0'};
  const std::string_view rest = piece.substr(begin);
  return rest.substr(0, rest.find_first_of(std::string_view(ends, sizeof ends)));
}

// What is done to each stride is written without a branch, so that compilers make vector instructions of it: it costs
// the same whatever the bytes are.
constexpr std::size_t kBehindD = 10;  // bytes that tell whether a title follows the d of "pdf:Title"

// Whether the ":T" of "pdf:Title" stands behind some byte of a stride: nearly never in a compressed document.
bool holds_word(const char* stride) noexcept {
  std::uint8_t least = 0xff;
  for (std::size_t i = 0; i < kStride; ++i) {
    const auto differing = static_cast<std::uint8_t>((stride[i + 2] ^ ':') | (stride[i + 3] ^ 'T'));
    least = differing < least ? differing : least;
  }
  return least == 0;
}

// For each byte of a stride kOpening when it may be the d of pdf:Title='X or <pdf:Title>X, where X does not end the
// title, else 0.
constexpr std::uint8_t kOpening = 0xff;
using Openings = std::array<std::uint8_t, kStride>;

constexpr std::uint8_t same(char one, char other) noexcept { return one == other ? kOpening : 0; }

constexpr std::uint8_t begins_title(char first, char closing) noexcept {
  return static_cast<std::uint8_t>(~(same(first, closing) | same(first, '\n') | same(first, '\0')));
}

Openings openings_in(const char* stride) noexcept {
  Openings openings;
  for (std::size_t i = 0; i < kStride; ++i) {
    const char* const colon = stride + i + 2;
    const int attribute = same(colon[6], '=') & same(colon[7], '\'') & begins_title(colon[8], '\'');
    const int element = same(colon[6], '>') & begins_title(colon[7], '<');
    openings[i] = static_cast<std::uint8_t>(same(colon[0], ':') & same(colon[1], 'T') & same(colon[5], 'e') &
                                            (attribute | element));
  }
  return openings;
}

// Finds in one block where a title may begin.
class OpeningSearch {
 public:
  explicit OpeningSearch(std::string_view block) noexcept : block_(block) {}

  // The first such place at or behind `from`.
  std::size_t next(std::size_t from) noexcept {
    for (std::size_t at = from; at < block_.size(); at = end_) {
      if (at >= end_) enter(at);
      if (!promising_) continue;
      const std::size_t begin = std::max(at, begin_);
      const void* found = std::memchr(openings_.data() + (begin - begin_), kOpening, end_ - begin);
      if (found != nullptr)
        return begin_ + static_cast<std::size_t>(static_cast<const std::uint8_t*>(found) - openings_.data());
    }
    return kNone;
  }

 private:
  // Enters the first stride at or behind `begin` that has to be looked at.
  void enter(std::size_t begin) noexcept {
    const std::size_t left = block_.size() - begin;
    const std::size_t whole = left < kBehindD ? 0 : (left - kBehindD) / kStride;
    const std::size_t passed = search_(block_.data() + begin, whole);
    begin_ = begin + passed * kStride;
    end_ = begin_ + kStride;
    const char* const stride = passed < whole ? block_.data() + begin_ : filled_up(begin_);
    promising_ = holds_word(stride);
    if (promising_) openings_ = openings_in(stride);
  }

  // The end of the block, followed by NULs.
  const char* filled_up(std::size_t begin) noexcept {
    last_.fill('\0');
    block_.copy(last_.data(), last_.size(), begin);
    return last_.data();
  }

  std::string_view block_;
  PairSearch search_ = pair_searches().back();
  std::size_t begin_ = 0;  // of the stride that was entered last
  std::size_t end_ = 0;
  bool promising_ = false;
  Openings openings_{};
  std::array<char, kStride + kBehindD> last_{};
};

std::string_view title_in_block(std::string_view block) {
  OpeningSearch openings(block);
  std::size_t boundary = 0;
  for (std::size_t at = 0; (at = openings.next(at)) != kNone;) {
    const Piece piece = piece_around(block, boundary, at);
    const std::string_view title = title_in_piece(block.substr(piece.begin, piece.end - piece.begin));
    if (!title.empty()) return title;
    boundary = at = piece.end;
  }
  return {};
}

}  // namespace

std::string_view title_in_piece(std::string_view piece) {
  std::string_view title;
  const std::size_t attribute = find_word(piece, kTitleAttribute);
  if (attribute != kNone) title = text_until(piece, attribute + kTitleAttribute.size(), '\'');
  if (!title.empty()) return title;
  const std::size_t element = find_word(piece, kTitleElement);
  if (element != kNone) title = text_until(piece, element + kTitleElement.size(), '<');
  return title;
}

std::string pdf_title(PieceBlocks& pdf) {
  for (std::string_view block; pdf.next(block);) {
    const std::string_view title = title_in_block(block);
    if (!title.empty()) return std::string(title);
  }
  return {};
}

std::optional<std::string> library_title(PieceBlocks& data_file) {
  std::optional<std::string> title;
  for (std::string_view block; data_file.next(block);) {
    std::size_t boundary = 0;
    for (std::size_t at; (at = find_word(block, kLibraryTitle, boundary)) != kNone;) {
      const Piece piece = piece_around(block, boundary, at);
      const std::string_view line = block.substr(piece.begin, piece.end - piece.begin);
      // A hit that reaches into the next piece is none: no line holds it.
      if (const auto text = quoted(line, 1); text && contains(line, kLibraryTitle)) title = std::string(*text);
      boundary = piece.end;
    }
  }
  return title;
}

}  // namespace olh
