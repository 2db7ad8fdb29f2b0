// What a documentation root holds: its documents and portals, by name.
//
// Knows    which files make a document for the lookups, and that behind a URL only the root's own lists can tell.
// Not      which roots there are (search_roots).
// For      list and check; locate, for what is nearly there.
#ifndef OLH_TOOLS_HOLDINGS_H
#define OLH_TOOLS_HOLDINGS_H

#include <string>
#include <vector>

#include "olh/olh.h"

namespace olh {

struct Holding {
  std::string name;   // as a help call would name it
  std::string title;  // "" when no list gives it
  bool html = false;
  bool pdf = false;
  bool portal = false;
  std::string shadowed_by;  // the root whose document of that name is shown instead, "" when this one is shown
};

// A directory of a root that cannot be read to its end.
struct HalfRead {
  std::string directory;  // below the root
  std::string reason;
};

struct Holdings {
  std::string root;
  bool documents_known = true;  // all of them
  bool portals_known = true;
  std::vector<HalfRead> half_read;
  std::vector<Holding> all;              // by name
  std::vector<std::string> unreachable;  // names of manuals whose start page has a name that no lookup knows
};

Holdings holdings_of(const std::string& root);

// Whether a manual has an "index.html" alone, which no lookup finds; and that said of it, as the rest of a sentence.
bool has_wrong_start_page(const std::string& root, const std::string& manual);
inline constexpr const char* kWrongStartPage =
    "has a start page index.html, which no help call finds; call it index.htm";

// Marks what a help call with its bare name would not show. The roots in the order of the search path; `preferred` is
// the front of the viewer order.
void mark_shadowed(std::vector<Holdings>& roots, OlhViewer preferred);

}  // namespace olh

#endif
