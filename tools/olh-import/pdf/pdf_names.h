// The names that a PDF gets for the library: one for every place that it names, and for every line of its outline.
//
// Knows    which name wins, and what becomes of places that the library could not ask for.
// Not      how a PDF holds them (pdf_file).
// For      import_pdf.
#ifndef OLH_IMPORT_PDF_NAMES_H
#define OLH_IMPORT_PDF_NAMES_H

#include <string>
#include <vector>

#include "arranged_topics.h"
#include "pdf_file.h"

namespace olh_import {

struct PdfNames {
  struct Added {
    std::string name;  // "M8.newlink.Setting.Up"
    const PdfPlace* place;
  };
  std::vector<Added> added;
  std::vector<std::string> known_tags;  // that lead to a place without them
  std::vector<SameName> same_names;
  std::vector<std::string> notes;
};

// What a person calls places (`given`, which live as long as the result) comes before all that the PDF says.
PdfNames names_for_library(const PdfFile& pdf, const std::vector<PdfPlace>& given);

}  // namespace olh_import

#endif
