// The import of a document: its pages, its PDF, or both, which become one document in two forms.
//
// Knows    that nothing of the root changes before both are read, and that a tag may lead somewhere in one form only.
// For      main.
#ifndef OLH_IMPORT_IMPORT_DOCUMENT_H
#define OLH_IMPORT_IMPORT_DOCUMENT_H

#include <optional>

#include "import_manual.h"

namespace olh_import {

struct DocumentOutcome {
  std::optional<ImportOutcome> manual;
  std::optional<ImportOutcome> pdf;
};

// Throws a Refusal. What the root holds of a form that is not among the sources stays.
DocumentOutcome import_document(const ImportRequest& asked,
                                const std::function<void(std::size_t done, std::size_t of)>& progress);

}  // namespace olh_import

#endif
