// A text file, line by line.
//
// Knows    how lines are cut out of large blocks, at bytes: a NUL is a byte like any other.
// Not      what a line means.
// Owns     the open file and one block of it, 256 KiB.
// For      whoever reads a file that may be long: topic tables, document lists.
#ifndef OLH_COMMON_LINE_READER_H
#define OLH_COMMON_LINE_READER_H

#include <cstddef>
#include <memory>
#include <string_view>

#include "unique_fd.h"

namespace olh {

class LineReader {
 public:
  // Opens a regular file; nothing else can be read. A line longer than `longest` bytes (at least one, at most a block),
  // its line feed included, comes in pieces of that length, the last one shorter.
  LineReader(const char* path, std::size_t longest);

  // Whether the file was opened.
  explicit operator bool() const noexcept { return static_cast<bool>(file_); }
  // Gives the next line or piece, with its line feed if it has one, valid until the next call. False at the end of
  // the file and after a failure.
  bool next(std::string_view& line);
  // Whether reading ended in a failure and not at the end of the file.
  bool failed() const noexcept { return failed_; }

 private:
  std::size_t complete_length() const noexcept;
  bool read_more();
  void make_room();

  UniqueFd file_;
  std::size_t longest_;
  std::unique_ptr<char[]> block_;
  std::size_t begin_ = 0;    // of what has not been handed out
  std::size_t scanned_ = 0;  // up to here there is no line feed
  std::size_t end_ = 0;
  bool failed_ = false;
};

}  // namespace olh

#endif
