// Where a document may lie: every place that the lookups try, in their order.
//
// Knows    the forms of a document below a root, and the steps outside the roots (a path given as such, the current
//          directory).
// Not      which roots there are (search_roots), which place wins (locate: the library itself says so).
// For      locate and `olh where --all`.
#ifndef OLH_TOOLS_PLACES_H
#define OLH_TOOLS_PLACES_H

#include <string>
#include <vector>

#include "olh/olh.h"

namespace olh {

struct Place {
  std::string location;  // what the lookup answers when it finds the document here
  std::string tested;    // the file or URL that has to be there
  OlhViewer kind;        // how it would be shown
  std::string root;      // "" outside the roots
};

// The places of a document name, in the order of the tries; a place that comes again is listed once.
std::vector<Place> places_of(const std::string& document, OlhViewer preferred, const std::vector<std::string>& roots);

// Whether a document name is taken as a path or URL rather than looked up in the viewer order.
bool is_path_or_url(const std::string& document);
// Whether it is first looked up as a portal.
bool is_portal_name(const std::string& document);
// Whether a name or location ends in ".pdf": as written, or in any mix of case.
bool ends_in_pdf(const std::string& location);
bool ends_in_any_pdf(std::string name);
// A name without such an ending, and with one.
std::string without_pdf(const std::string& name);
std::string with_pdf(const std::string& name);

// "html", "pdf" or "portal".
const char* kind_name(OlhViewer kind);

}  // namespace olh

#endif
