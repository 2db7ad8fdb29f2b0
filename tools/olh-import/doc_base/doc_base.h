// What Debian's doc-base knows of the documents of a machine: a file of fields for each, which its package has installed.
//
// Knows    the form of such a file, and which fields it must have.
// Not      whether what it names is there (import_doc_base).
// For      import_doc_base.
#ifndef OLH_IMPORT_DOC_BASE_H
#define OLH_IMPORT_DOC_BASE_H

#include <string>
#include <vector>

namespace olh_import {

struct Registration {
  std::string file;      // that registers it
  std::string document;  // the identifier: "python3.11-lib"
  std::string title;
  std::string section;  // "Programming/Python"
  std::string index;    // the page that it begins with; "" without pages
  // Patterns of file names, of its pages and of its PDF.
  std::vector<std::string> pages;
  std::vector<std::string> pdfs;
};

// The registrations with pages or a PDF in some folders, ordered by folder and file. A broken one is a sentence of
// `problems`. Throws a Refusal where none of the folders is there, or one cannot be listed.
std::vector<Registration> registrations_in(const std::vector<std::string>& folders,
                                           std::vector<std::string>& problems);

}  // namespace olh_import

#endif
