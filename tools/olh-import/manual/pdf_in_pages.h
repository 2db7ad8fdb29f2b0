// The PDF of a document that has pages, too: it lies in the folder of the pages, and a link leads there from the place of PDFs.
// The pages change in one step, and the PDF with them.
//
// Knows    where it lies in that folder, and how one that lies elsewhere gets there without being missed.
// Not      what is in a PDF.
// For      import_document, import_pdf.
#ifndef OLH_IMPORT_PDF_IN_PAGES_H
#define OLH_IMPORT_PDF_IN_PAGES_H

#include <string>

#include "import_manual.h"
#include "output_folder.h"

namespace olh_import {

class PdfInPages {
 public:
  explicit PdfInPages(const ImportRequest& asked);

  // Whether the PDF in its place is the one in the folder of the pages.
  bool is_there() const;
  // Moves the file `pdf` of an output folder into that of new pages, and makes the place show what is in the pages that are
  // there. False where file systems or an older document do not allow it: the PDF waits in its output folder then.
  bool lay_into(const OutputFolder& pages, const OutputFolder& pdf) const;
  // New pages get the PDF that lies in those before them.
  void keep_in(const OutputFolder& pages) const;
  // The PDF in its place is another one now.
  void forget() const;

 private:
  bool leads_to_pages() const;
  bool lead_to_pages(const OutputFolder& pdf) const;

  std::string root_;
  std::string place_;  // of PDFs
  std::string old_;    // in the pages that are there
  std::string link_;   // what the link says
};

}  // namespace olh_import

#endif
