#include "line_reader.h"

#include <unistd.h>

#include <algorithm>
#include <cstring>

#include "regular_file.h"
#include "retry.h"

namespace olh {

namespace {
constexpr std::size_t kBlock = 256 * 1024;
constexpr std::size_t kNoLine = 0;
}  // namespace

LineReader::LineReader(const char* path, std::size_t longest)
    : file_(open_regular_file(path).descriptor), longest_(longest) {}

bool LineReader::next(std::string_view& line) {
  std::size_t length = complete_length();
  while (length == kNoLine && read_more()) length = complete_length();
  if (failed_) return false;
  if (length == kNoLine) length = end_ - begin_;  // the last line, without a line feed
  if (length == 0) return false;
  line = std::string_view(block_.get() + begin_, length);
  begin_ += length;
  scanned_ = begin_;
  return true;
}

// The length of the first line or piece in the block; kNoLine while its end has not been read.
std::size_t LineReader::complete_length() const noexcept {
  const std::size_t available = end_ - begin_;
  const std::size_t searched = scanned_ - begin_;
  const std::size_t limit = std::min(available, longest_);
  if (searched < limit) {
    const void* feed = std::memchr(block_.get() + scanned_, '\n', limit - searched);
    if (feed != nullptr) return static_cast<std::size_t>(static_cast<const char*>(feed) - block_.get()) - begin_ + 1;
  }
  return available >= longest_ ? longest_ : kNoLine;
}

// False at the end of the file and after a failure.
bool LineReader::read_more() {
  if (!file_ || failed_) return false;
  scanned_ = end_;
  make_room();
  const ssize_t got = retry_interrupted([this] { return ::read(file_.get(), block_.get() + end_, kBlock - end_); });
  failed_ = got < 0;
  if (got > 0) end_ += static_cast<std::size_t>(got);
  return got > 0;
}

// Moves what is left to the front, so that each block begins where a line does.
void LineReader::make_room() {
  const std::size_t left = end_ - begin_;
  if (block_ == nullptr) block_ = std::make_unique_for_overwrite<char[]>(kBlock);
  if (left != 0) std::memmove(block_.get(), block_.get() + begin_, left);
  scanned_ -= begin_;
  begin_ = 0;
  end_ = left;
}

}  // namespace olh
