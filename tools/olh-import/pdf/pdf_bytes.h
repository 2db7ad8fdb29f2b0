// The bytes of a PDF as a stream, out of their compression where they have one.
//
// Knows    which files are taken for PDFs by their name, and how large one may be.
// Owns     the stream. A file is never in memory as a whole; what came out of a compressed one is in a file without a name.
// For      import_pdf.
#ifndef OLH_IMPORT_PDF_BYTES_H
#define OLH_IMPORT_PDF_BYTES_H

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace olh_import {

// "guide.pdf", "guide.pdf.gz".
bool is_pdf_name(std::string_view name);
bool is_compressed(std::string_view name);

class PdfBytes {
 public:
  // A Refusal for what is no file, cannot be read, or is too large.
  explicit PdfBytes(const std::string& file);

  std::FILE* stream() const { return stream_.get(); }
  // Whether a PDF begins near the beginning, as the format has it.
  bool is_pdf() const;
  // All of them; a Refusal when they cannot be read any more.
  void copy(std::FILE* to) const;

 private:
  void unpack();

  std::string file_;
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream_;
};

}  // namespace olh_import

#endif
