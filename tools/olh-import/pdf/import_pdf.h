// The import of a PDF: read and refused first, brought to its place later. And the same of a PDF that stays outside a root.
//
// Knows    where a PDF and its mark of origin lie in a root, and what a linked one does without.
// Not      what is in a PDF (pdf_file, pdf_names).
// For      import_document, import_doc_base, main.
#ifndef OLH_IMPORT_IMPORT_PDF_H
#define OLH_IMPORT_IMPORT_PDF_H

#include <cstdio>
#include <functional>
#include <optional>
#include <set>
#include <string>

#include "import_manual.h"
#include "output_folder.h"

namespace olh_import {

class PdfImport {
 public:
  // Reads the PDF, and puts it together beside its place. Throws a Refusal.
  PdfImport(const ImportRequest& asked, const std::string& file);
  // The same for one that cannot be read or changed: as it is, linked where it is not compressed.
  struct Unread {};
  PdfImport(const ImportRequest& asked, const std::string& file, Unread);

  const ImportOutcome& outcome() const { return outcome_; }
  void take_place();
  // The same with new pages of its name, which have made room: in one step with them, or right before or after.
  void take_place_with(OutputFolder& pages);

 private:
  void put_mark();
  void put_together(const std::string& file);
  void lay_ready(const std::string& file, bool link, const std::function<void(std::FILE*)>& write);

  const ImportRequest& asked_;
  std::string place_;
  std::optional<OutputFolder> out_;
  ImportOutcome outcome_;
};

// Writes the PDF `from` with what the library needs to the file `to`, in one step. Links to files in the folder `beside`
// become links to files beside `to`; "": there are none. Of `asked`, title, places and dry_run count. Throws a Refusal.
ImportOutcome write_pdf(const ImportRequest& asked, const std::string& from, const std::string& to,
                        const std::string& beside);

// The tags that lead to a place in the PDF that the root has; none where there is no such PDF, or it cannot be read.
std::set<std::string> tags_of_pdf(const ImportRequest& asked);

}  // namespace olh_import

#endif
