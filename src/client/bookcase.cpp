// Opening the bookcase, the PDF that lists the documentation.
#include "bounded_text.h"
#include "entry_point.h"
#include "locate.h"
#include "olh/support.h"

namespace {
constexpr char kDefaultBookcase[] = "_bk_qel.pdf";
}

int OlhBookcase(const char* bookcase, const char* tag) noexcept {
  const olh::EntryPoint call("OlhBookcase", bookcase, tag);
  const char* name = olh::is_empty(bookcase) ? kDefaultBookcase : bookcase;
  Place place;
  if (FindPdfDoc(place.location, name, place.viewerPath) != 0) return call.done(show_in(OLH_VIEWER_PDF, place, tag));
  const bool shown = GetOlhDocPath() != nullptr && show_not_found_pdf(place) == OLH_RESULT_OK;
  if (!shown) show_support_portal(place);
  return call.done(OLH_RESULT_NOT_FOUND);
}
