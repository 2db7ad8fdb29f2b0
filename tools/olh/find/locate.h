// Where a document is, as the library's own lookups answer.
//
// Knows    which lookups a help call makes for a name, in which order, and how it tells a PDF from an HTML manual.
// Not      what a lookup tries on its way (places).
// For      every verb that looks one document up.
#ifndef OLH_TOOLS_LOCATE_H
#define OLH_TOOLS_LOCATE_H

#include <nlohmann/json_fwd.hpp>
#include <string>

#include "olh/olh.h"
#include "search_roots.h"

namespace olh {

struct Located {
  bool found = false;
  std::string location;
  OlhViewer kind = OLH_VIEWER_HTML;
  std::string root;          // "" outside the roots
  std::string tree_program;  // the viewer that the documentation tree prescribes for it
  std::string tree_file;     // and the options file that says so
};

Located locate(const std::string& document, const SearchRoots& roots);

// As one lookup alone answers: a document of that kind, below whichever root holds it.
using Lookup = int (*)(char* out, const char* name, char* viewer_path);
Located locate_with(Lookup lookup, OlhViewer kind, const std::string& name, const SearchRoots& roots);

// The keys "document", "found", "location", "kind" and "root" of an answer.
nlohmann::json located_as_json(const std::string& document, const Located& located);

// Sentences on standard error. That there is no such document, where it was looked for, what helps, and everything that may
// be the reason; returns OLH_RESULT_NOT_FOUND, or OLH_RESULT_INVALID for no name at all.
int complain_not_found(const std::string& document, const SearchRoots& roots);
// That there is no such thing, with what was looked for, or that no root is known.
void complain_missing(const std::string& what, const std::string& looked_for, const SearchRoots& roots);
// What may be the reason: rejected --root, option files that could not be read.
void complain_about_roots(const SearchRoots& roots);

inline constexpr const char* kNoRoot =
    "no documentation root is known. Set QEL_DOC_PATH, or give --root PATH; 'olh paths' prints what was tried.";

}  // namespace olh

#endif
