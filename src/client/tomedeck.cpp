// Opening a documentation portal.
#include "bounded_text.h"
#include "entry_point.h"
#include "locate.h"
#include "olh/support.h"

namespace {

constexpr char kMainPortal[] = "";

// The portal is not there: the main portal at the same tab, else the not-found PDF, else the support portal.
// Without any documentation root there is only the last.
void show_instead(const char* tag, Place& place) noexcept {
  if (GetOlhDocPath() != nullptr) {
    if (FindTomeDeck(place.location, kMainPortal, place.viewerPath) != 0) {
      show_in(OLH_VIEWER_TOMEDECK, place, tag);
      return;
    }
    if (show_not_found_pdf(place) == OLH_RESULT_OK) return;
  }
  show_support_portal(place);
}

}  // namespace

int OlhTomeDeck(const char* portal, const char* tag) noexcept {
  const olh::EntryPoint call("OlhTomeDeck", portal, tag);
  const char* name = olh::is_empty(portal) ? kMainPortal : portal;
  Place place;
  if (FindTomeDeck(place.location, name, place.viewerPath) != 0)
    return call.done(show_in(OLH_VIEWER_TOMEDECK, place, tag));
  show_instead(tag, place);
  return call.done(OLH_RESULT_NOT_FOUND);
}
