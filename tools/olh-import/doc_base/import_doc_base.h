// The import of every manual that a machine has registered: its pages linked, its PDF with names and title.
//
// Knows    which folder the pages of a registration lie in, what becomes of one that is broken, taken or gone, and that
//          only what an earlier run has brought is removed.
// Not      the form of a registration (doc_base), portals (section_portals).
// For      main.
#ifndef OLH_IMPORT_IMPORT_DOC_BASE_H
#define OLH_IMPORT_IMPORT_DOC_BASE_H

#include <functional>
#include <string>
#include <vector>

#include "import_manual.h"

namespace olh_import {

struct DocBaseRequest {
  std::string root;                  // an absolute path
  std::vector<std::string> folders;  // of registrations
  bool dry_run = false;
};

struct DocBaseOutcome {
  struct Document {
    std::string name;
    std::string section;
    ImportOutcome outcome;  // of one of its two forms
  };
  std::vector<Document> documents;
  std::vector<std::string> problems;  // a sentence without its full stop for each
  std::vector<std::string> removed;   // places
  std::size_t portals = 0;
};

// `progress` hears of each page. Throws a Refusal where nothing can be brought at all.
DocBaseOutcome import_doc_base(const DocBaseRequest& asked,
                               const std::function<void(std::size_t done, std::size_t of)>& progress);

}  // namespace olh_import

#endif
