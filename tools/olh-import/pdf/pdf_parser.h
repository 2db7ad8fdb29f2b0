// The parser of PDFs, qpdf, in a form that every compiler takes.
//
// For      pdf_file, pdf_update.
#ifndef OLH_IMPORT_PDF_PARSER_H
#define OLH_IMPORT_PDF_PARSER_H

#include <qpdf/DLL.h>

// What qpdf says of JSON is needed nowhere here, and up to qpdf 11 clang cannot read it as C++20.
#if defined(__clang__) && QPDF_MAJOR_VERSION < 12
#define JSON_HH
class JSON;
#endif

#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>

#endif
