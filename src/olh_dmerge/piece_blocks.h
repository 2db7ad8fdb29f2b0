// A large file, block by block, cut where its lines are cut.
//
// Knows    that a piece ends with its line feed or after kLongestLine bytes, that each block begins at such a boundary,
//          and that what follows a block's last boundary is carried to the next.
//          A file is not asked for more once all that it held when it was opened has been read.
// Not      what is looked for; a rare word is searched in the whole block, and its piece worked out only around a hit.
// Owns     one block, for one file after the other.
// For      the title searches of this room. Files with a rule for each line are read with LineReader.
#ifndef OLH_DMERGE_PIECE_BLOCKS_H
#define OLH_DMERGE_PIECE_BLOCKS_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "regular_file.h"

namespace olh {

class PieceBlocks {
 public:
  PieceBlocks();
  PieceBlocks(const PieceBlocks&) = delete;
  PieceBlocks& operator=(const PieceBlocks&) = delete;
  ~PieceBlocks();

  // Begins with another file.
  void start(RegularFile file) noexcept;
  // Gives the next whole pieces, valid until the next call. False at the end of the file and after a failure.
  bool next(std::string_view& block) noexcept;
  // Whether reading ended in a failure and not at the end of the file.
  bool failed() const noexcept { return failed_; }

 private:
  struct Buffer;

  bool read_more() noexcept;

  std::unique_ptr<Buffer> buffer_;
  RegularFile file_;
  std::uint64_t read_ = 0;  // bytes of the file
  char* begin_ = nullptr;   // of what has not been handed out
  char* end_ = nullptr;
  bool at_end_ = true;
  bool failed_ = false;
};

// The piece that holds the byte at `at`. `boundary` is the beginning of that piece or an earlier one.
struct Piece {
  std::size_t begin;
  std::size_t end;
};
Piece piece_around(std::string_view block, std::size_t boundary, std::size_t at) noexcept;

}  // namespace olh

#endif
