// Where a documentation portal lies.
//
// Knows    that a portal NAME is there when its own start page is, and that the main page is opened all the same, with
//          the name in its query.
// Not      which tab it opens at (show).
// For      the lookup wrapper.
#include "bounded_text.h"
#include "lookup_common.h"
#include "olh/support.h"
#include "url_build.h"

namespace olh {

namespace {

void set_marker(Candidate& marker, std::string_view root, std::string_view name) noexcept {
  if (name.empty())
    marker.join({root, "/tomedecks/index.html"});
  else
    marker.join({root, "/tomedecks/", name, "/index.html"});
}

// The main page below a root, with the portal's name in the query.
bool hand_out(char* out, std::string_view scheme, std::string_view root, std::string_view name) noexcept {
  Candidate location({scheme, root, "/tomedecks/index.html", name.empty() ? "" : "?tomedeck=", name});
  urlslash(location.text());
  return write_buffer(out, location.text()) && *out != '\0';
}

bool portal_in_root(olh_docList& locator, Candidate& marker, char* out, std::string_view name) {
  const char* const root = locator.mCurrentDocPath;
  if (is_url(root) == 1) {
    set_marker(marker, root, name);
    if (marker.is_served(locator)) return hand_out(out, "", root, name);
  }
  set_marker(marker, root, name);
  return marker.is_readable() && hand_out(out, kFileScheme, root, name);
}

}  // namespace

}  // namespace olh

// In each root, for a portal NAME and for the main page (name ""):
//
//   tested                                             location
//   ROOT/tomedecks/NAME/index.html, probed (URL)       ROOT/tomedecks/index.html?tomedeck=NAME
//   ROOT/tomedecks/NAME/index.html, readable           file://ROOT/tomedecks/index.html?tomedeck=NAME
//   ROOT/tomedecks/index.html, probed (URL)            ROOT/tomedecks/index.html
//   ROOT/tomedecks/index.html, readable                file://ROOT/tomedecks/index.html
int olh_docList::FindTomeDeck(char* out, const char* name, char* viewerPath) {
  print_debug("olh_docList::FindTomeDeck\n");
  if (out == nullptr || name == nullptr) {
    print_debug("olh_docList::FindTomeDeck: failed: invalid arg\n");
    return 0;
  }
  olh::set_context(*this, nullptr);
  olh::Candidate marker;
  for (const OlhPathList* entry = mDocPathList; entry != nullptr; entry = entry->next) {
    const bool has_name = olh::enter_root(*this, "FindTomeDeck", name, *entry);
    olh::write_buffer(viewerPath, olh::text_of(entry->html));
    if (!has_name || !olh::portal_in_root(*this, marker, out, name)) continue;
    print_debug("olh_docList::FindTomeDeck: done\n");
    return 1;
  }
  olh::clear_buffer(out);
  print_debug("olh_docList::FindTomeDeck: failed: not found\n");
  return 0;
}
