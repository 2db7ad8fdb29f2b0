// The titles that documents carry in their own files.
//
// Knows    the words that stand before a title, and how they are found fast in large files.
// Not      which files are read, nor what a document without a title is called (library_extraction).
// For      the extraction of libraries and PDF documents.
#ifndef OLH_DMERGE_TITLE_SCAN_H
#define OLH_DMERGE_TITLE_SCAN_H

#include <optional>
#include <string>
#include <string_view>

#include "piece_blocks.h"

namespace olh {

// The title of the HTML library whose data file was started: the second quoted argument of the last line that names
// one. Nothing when no line does; reads to the end of the file.
std::optional<std::string> library_title(PieceBlocks& data_file);

// The title in the metadata of the PDF that was started, "" without one; reading stops behind it.
std::string pdf_title(PieceBlocks& pdf);

// The title in one piece of a PDF, "" without one:
//   ...pdf:Title='TITLE'...    the first of these in the piece, else, or when TITLE is empty,
//   ...<pdf:Title>TITLE<...    the first of these
// A title also ends at the end of the piece, at a line feed and at a NUL.
std::string_view title_in_piece(std::string_view piece);

}  // namespace olh

#endif
