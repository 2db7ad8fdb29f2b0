// A PDF as what it says of itself (places that it names, outline, title), and what makes the same file have more names and
// another title.
//
// Knows    the parser (qpdf), how much of a PDF is believed, the two forms in which a PDF names places, and which objects
//          change.
// Not      which names the library asks for (pdf_names), how a title is written (xmp_title), the form of an update
//          (pdf_update).
// Owns     the document; a PdfPlace lives as long.
// For      import_pdf, pdf_names.
#ifndef OLH_IMPORT_PDF_FILE_H
#define OLH_IMPORT_PDF_FILE_H

#include <cstdio>
#include <initializer_list>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "packed_objects.h"
#include "pdf_parser.h"

namespace olh_import {

class PdfUpdate;

// Where a name, or a line of the outline, leads.
struct PdfPlace {
  std::string name;         // UTF-8
  int page = 0;             // from 1; 0: to no page of this document
  QPDFObjectHandle target;  // the explicit destination
  std::string where;        // the same for equal targets
};

class PdfFile {
 public:
  // A Refusal for one that is encrypted or damaged, and for what is none. `file` is how a person calls it; `bytes` live
  // as long.
  PdfFile(std::FILE* bytes, std::string file);
  PdfFile(const PdfFile&) = delete;
  PdfFile& operator=(const PdfFile&) = delete;

  std::size_t pages() const { return page_count_; }
  const std::vector<PdfPlace>& named() const { return named_; }      // in the order of their bytes
  const std::vector<PdfPlace>& outline() const { return outline_; }  // in reading order
  // What its metadata say, "" without a word; whether the list generator sees just that.
  const std::string& title() const { return title_; }
  bool has_visible_title() const { return has_visible_title_; }

  // The whole of a page, counted from 1; nothing where there is none.
  std::optional<PdfPlace> place_of_page(int page);

  // A name that is there already leads to this place from now on.
  void add_name(const std::string& name, const PdfPlace& place);
  // Links to files in this folder become links to files beside the PDF: what is printed names them by their place. Whether
  // there are any.
  bool lead_beside(const std::string& folder);
  void set_title(const std::string& title);
  // Writes what was added behind the bytes of the file, which are in `to` already. A Refusal when the file turns out to be
  // damaged; whether `to` takes it is the business of whoever has opened it.
  void append_to(std::FILE* to);

 private:
  template <typename Action>
  void parsing(Action action);
  template <typename Take>
  void walk(const char* what, const QPDFObjectHandle& top, Take take);
  [[noreturn]] void refuse(const std::string& why) const;
  QPDFObjectHandle read(const QPDFObjectHandle& dictionary, const char* key);
  void read_pages();
  void read_names();
  void read_outline();
  void read_title();
  PdfPlace place(std::string name, QPDFObjectHandle target);
  void mark_changed(std::initializer_list<QPDFObjectHandle> from_inside);
  QPDFObjectHandle reference_to(QPDFObjGen written);
  void append_name_tree(PdfUpdate& update);
  void append_metadata(PdfUpdate& update);

  // Bytes of the file that say what is so no more to whoever does not look through the parser's eyes.
  struct Outdated {
    long long from;
    std::string bytes;
  };

  std::FILE* bytes_;
  std::string file_;
  QPDF pdf_;
  std::optional<PackedObjects> packed_;
  QPDFObjectHandle catalog_;
  std::size_t page_count_ = 0;
  std::map<QPDFObjGen, int> pages_;
  std::map<std::string, QPDFObjectHandle> values_;  // of all names, by their bytes
  std::vector<PdfPlace> named_;
  std::vector<PdfPlace> outline_;
  std::set<QPDFObjGen> changed_;
  std::vector<Outdated> outdated_;
  std::string xmp_;
  std::string new_xmp_;
  std::string title_;
  bool has_visible_title_ = false;
  bool has_new_names_ = false;
};

}  // namespace olh_import

#endif
