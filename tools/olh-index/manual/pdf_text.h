// What a PDF says, page by page, for the index.
//
// Knows    what pdftotext (of poppler-utils) prints; it is a program of its own, so that a stranger's PDF does no harm here.
// For      main.
#ifndef OLH_TOOLS_INDEX_PDF_TEXT_H
#define OLH_TOOLS_INDEX_PDF_TEXT_H

#include <string>

#include "indexed_manual.h"

namespace olh_index {

// The PDF as one page of the index with a section for each page that has text; its title alone where there is no text.
void read_pdf(const std::string& file, const std::string& address, IndexedManual& manual);

// The same from what was printed, in which a form feed ends each page.
void take_pdf_text(std::string_view text, const std::string& address, IndexedManual& manual);

}  // namespace olh_index

#endif
