#include "title_scan.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "script_line.h"

namespace olh {

namespace {

constexpr std::string_view kLibraryTitle = "QELAddBookVar(\"DocTitle\"";
constexpr std::string_view kTitleWord = "pdf:Title";
constexpr std::string_view kTitleAttribute = "pdf:Title='";
constexpr std::string_view kTitleElement = "<pdf:Title>";
constexpr std::size_t kColon = kTitleWord.find(':');
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

// Whether the word "pdf:Title" at `at` may begin a title that is not empty: for most of them, four bytes tell.
bool may_open_title(std::string_view block, std::size_t at) {
  const std::string_view behind = block.substr(at + kTitleWord.size());
  if (behind.starts_with("='")) return !text_until(behind.substr(0, 3), 2, '\'').empty();
  return behind.starts_with('>') && at > 0 && block[at - 1] == '<' &&
         !text_until(behind.substr(0, 2), 1, '<').empty();
}

// How far the end of "pdf:Title" is at least, told by two neighbouring bytes: 0 where they may end the word.
constexpr std::uint8_t pair_of(char first, char second) {
  return static_cast<std::uint8_t>(static_cast<unsigned char>(second) - (static_cast<unsigned char>(first) << 3U));
}
constexpr std::array<std::uint8_t, 256> kSkips = [] {
  std::array<std::uint8_t, 256> skips{};
  skips.fill(static_cast<std::uint8_t>(kTitleWord.size() - 1));
  for (std::size_t i = 1; i < kTitleWord.size(); ++i)
    skips[pair_of(kTitleWord[i - 1], kTitleWord[i])] = static_cast<std::uint8_t>(kTitleWord.size() - 1 - i);
  return skips;
}();

// Finds "pdf:Title" in one block. Most documents are compressed, and its rarest byte is the colon: looking for that
// alone is nearly free. In a block full of colons it skips from pair to pair of bytes instead, which costs about
// twice what reading costs, whatever the block holds.
class TitleWordSearch {
 public:
  explicit TitleWordSearch(std::string_view block) noexcept
      : block_(block), patience_(kLeastPatience + block.size() / kBytesForOneColon) {}

  std::size_t next(std::size_t from) noexcept { return patience_ > 0 ? by_colon(from) : by_pairs(from); }

 private:
  static constexpr std::size_t kLeastPatience = 16;
  static constexpr std::size_t kBytesForOneColon = 128;  // twice what random bytes hold

  std::size_t by_colon(std::size_t from) noexcept {
    for (std::size_t colon = from + kColon; (colon = block_.find(':', colon)) != kNone; ++colon) {
      const std::size_t begin = colon - kColon;
      if (is_word(begin)) return begin;
      if (--patience_ == 0) return by_pairs(begin + 1);
    }
    return kNone;
  }

  std::size_t by_pairs(std::size_t from) const noexcept {
    for (std::size_t last = from + kTitleWord.size() - 1; last < block_.size();) {
      const std::size_t skip = kSkips[pair_of(block_[last - 1], block_[last])];
      const std::size_t begin = last - (kTitleWord.size() - 1);
      if (skip == 0 && is_word(begin)) return begin;
      last += skip == 0 ? 1 : skip;
    }
    return kNone;
  }

  bool is_word(std::size_t begin) const noexcept {
    return block_.size() - begin >= kTitleWord.size() &&
           std::memcmp(block_.data() + begin, kTitleWord.data(), kTitleWord.size()) == 0;
  }

  std::string_view block_;
  std::size_t patience_;  // colons outside the word that are still put up with
};

std::string_view title_in_block(std::string_view block) {
  TitleWordSearch words(block);
  std::size_t boundary = 0;
  std::size_t at = words.next(0);
  while (at != kNone) {
    std::size_t go_on = at + kTitleWord.size();
    if (may_open_title(block, at)) {
      const Piece piece = piece_around(block, boundary, at);
      const std::string_view title = title_in_piece(block.substr(piece.begin, piece.end - piece.begin));
      if (!title.empty()) return title;
      boundary = go_on = piece.end;
    }
    at = words.next(go_on);
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
