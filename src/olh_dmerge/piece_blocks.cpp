#include "piece_blocks.h"

#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include "retry.h"
#include "script_line.h"

namespace olh {

namespace {

constexpr std::size_t kPage = 4096;
constexpr std::size_t kBlock = 256 * 1024;

// Where the last piece that begins at or before `at` begins, when `boundary` begins one and no line feed is missed
// by looking from there.
std::size_t last_boundary(std::string_view block, std::size_t boundary, std::size_t at) noexcept {
  const char* const from = block.data() + boundary;
  const void* feed = at == boundary ? nullptr : memrchr(from, '\n', at - boundary);
  const std::size_t line =
      feed == nullptr ? boundary : static_cast<std::size_t>(static_cast<const char*>(feed) - block.data()) + 1;
  return line + (at - line) / kLongestLine * kLongestLine;
}

}  // namespace

// The system copies fastest to the beginning of a page.
struct alignas(kPage) PieceBlocks::Buffer {
  static_assert(kPage >= kLongestLine, "less than one piece is carried over, to the room in front of each read");
  char bytes[kPage + kBlock];
  char* block() noexcept { return bytes + kPage; }
};

PieceBlocks::PieceBlocks() : buffer_(std::make_unique_for_overwrite<Buffer>()) {}
PieceBlocks::~PieceBlocks() = default;

void PieceBlocks::start(RegularFile file) noexcept {
  file_ = std::move(file);
  read_ = 0;
  begin_ = end_ = buffer_->block();
  at_end_ = failed_ = false;
}

bool PieceBlocks::next(std::string_view& block) noexcept {
  std::size_t whole = 0;
  while (whole == 0 && read_more()) {
    const std::string_view all(begin_, static_cast<std::size_t>(end_ - begin_));
    whole = at_end_ ? all.size() : last_boundary(all, 0, all.size());
  }
  block = std::string_view(begin_, whole);
  begin_ += whole;
  return whole != 0;
}

// Reads the next block behind what is carried over. False when nothing is left to hand out.
bool PieceBlocks::read_more() noexcept {
  if (at_end_) return false;
  const auto carried = static_cast<std::size_t>(end_ - begin_);
  char* const place = buffer_->block();
  if (carried != 0) std::memmove(place - carried, begin_, carried);
  begin_ = place - carried;
  const ssize_t got = retry_interrupted([this, place] { return ::read(file_.descriptor.get(), place, kBlock); });
  failed_ = got < 0;
  end_ = place + std::max<ssize_t>(got, 0);
  read_ += static_cast<std::uint64_t>(end_ - place);
  at_end_ = got <= 0 || read_ == file_.size;
  return !failed_ && end_ != begin_;
}

Piece piece_around(std::string_view block, std::size_t boundary, std::size_t at) noexcept {
  const std::size_t begin = last_boundary(block, boundary, at);
  const std::size_t limit = std::min(begin + kLongestLine, block.size());
  const std::size_t feed = block.substr(0, limit).find('\n', at);
  return {begin, feed == std::string_view::npos ? limit : feed + 1};
}

}  // namespace olh
