// An incremental update of a PDF (ISO 32000-1, 7.5.6): behind the bytes of a file, which stay as they are, objects that are
// new or take the place of others.
//
// Knows    the form of an update (objects, cross-reference section, trailer), and where the file's own last section is.
// Not      which objects change, nor what is in them (pdf_file).
// For      pdf_file.
#ifndef OLH_IMPORT_PDF_UPDATE_H
#define OLH_IMPORT_PDF_UPDATE_H

#include <cstdio>
#include <map>
#include <memory>
#include <qpdf/QPDFCryptoProvider.hh>
#include <string>
#include <string_view>

#include "pdf_parser.h"

namespace olh_import {

class PdfUpdate {
 public:
  // `to` has the bytes of `source` already, whose trailer the parser has read. Whether `to` takes all that is written is
  // the business of whoever has opened it.
  PdfUpdate(std::FILE* source, const QPDFObjectHandle& trailer, std::FILE* to);

  // Writes a new object, and one in place of another.
  QPDFObjGen add(const std::string& object);
  void replace(QPDFObjGen place, const std::string& object);
  // Overwrites bytes of the file itself with spaces if they are there, for those who read it without its updates. `from`
  // is as the parser counts.
  void blank(long long from, const std::string& bytes);
  // Writes what makes an update of it: a section of the kind that the file's last one is, and the trailer.
  void finish();

 private:
  struct Entry {
    long long from;
    int generation;
  };
  void write(std::string_view bytes);
  QPDFObjectHandle identifier();
  int run_from(std::map<int, Entry>::const_iterator first) const;
  void write_table(QPDFObjectHandle trailer);
  void write_stream(QPDFObjectHandle trailer);

  std::FILE* source_;
  QPDFObjectHandle trailer_;
  std::FILE* to_;
  long long header_;        // where the file begins: all places count from there
  long long last_section_;  // of the file
  long long at_;            // what is written next is there
  int next_number_;
  std::map<int, Entry> entries_;
  std::shared_ptr<QPDFCryptoImpl> digest_ = QPDFCryptoProvider::getImpl();  // of the objects
};

}  // namespace olh_import

#endif
