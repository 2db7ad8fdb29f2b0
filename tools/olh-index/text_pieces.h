// The texts that are shown of a hit, in pieces of the index.
//
// Knows    where a long section is cut into parts, of which each counts as a section of the index, and what of a page and a section
//          is in a piece.
// Not      what is found (index_maker), and files: pieces are passed on as values (index_folder writes them).
// For      main; index_maker takes the parts from here.
#ifndef OLH_TOOLS_INDEX_TEXT_PIECES_H
#define OLH_TOOLS_INDEX_TEXT_PIECES_H

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "indexed_manual.h"
#include "word_pieces.h"

namespace olh_index {

// Calls with each part of a section's text, one at least.
void each_part(const Section& section, const std::function<void(std::string_view text)>& call);

// A section's heading, as far as it is searched and shown.
std::string_view heading_of(const Section& section);

class TextPieces {
 public:
  explicit TextPieces(WritePiece write) : write_(std::move(write)) {}

  // In the order in which the index counts pages and sections.
  void add(const IndexedManual& manual);
  // Passes on the last piece; returns how many sections each one has, packed.
  std::string finish();

 private:
  void begin_page(const Page& page);
  void add_part(const Page& page, const Section& section, std::string_view text);
  void write();

  WritePiece write_;
  std::string rows_of_pages_;  // of the piece that is made, as JSON
  std::string rows_of_sections_;
  std::string sections_of_pieces_;
  std::uint32_t sections_ = 0;  // in it
  std::uint32_t pieces_ = 0;
  std::uint32_t pages_ = 0;
};

}  // namespace olh_index

#endif
