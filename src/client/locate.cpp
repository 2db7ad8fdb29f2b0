#include "locate.h"

#include <string_view>

#include "ascii_case.h"
#include "bounded_text.h"
#include "olh/support.h"
#include "support_portal.h"
#include "viewer_order.h"

namespace {

constexpr std::string_view kPdfSuffix = ".pdf";

bool is_path_or_url(std::string_view name) noexcept { return name.find_first_of("/\\") != std::string_view::npos; }

// ".pdf" in any case, behind at least one other character.
bool names_a_pdf(std::string_view name) noexcept {
  return name.size() > kPdfSuffix.size() && olh::ends_in_any_case(name, kPdfSuffix);
}

bool is_pdf_location(std::string_view location) noexcept {
  return location.size() > kPdfSuffix.size() && location.ends_with(kPdfSuffix);
}

// A URL or a name without ".pdf" is an HTML document, a path that ends in ".pdf" a PDF.
int locate_path(char* location, const char* docName, char* viewerPath) noexcept {
  if (is_url(docName) == 0 && names_a_pdf(docName))
    return FindPdfDoc(location, docName, viewerPath) != 0 ? OLH_VIEWER_PDF : kNotLocated;
  return FindHtmlDoc(location, docName, viewerPath) != 0 ? OLH_VIEWER_HTML : kNotLocated;
}

// A portal's name is tried as a portal first; then the lookups follow in viewer order, and what they found
// tells the kind, since either may return the other form.
int locate_bare_name(char* location, const char* docName, char* viewerPath) noexcept {
  if (std::string_view(docName).ends_with("_td") && FindTomeDeck(location, docName, viewerPath) != 0)
    return OLH_VIEWER_TOMEDECK;
  for (const int viewer : viewerOrder) {
    const bool found = (viewer == OLH_VIEWER_PDF && FindPdfDoc(location, docName, viewerPath) != 0) ||
                       (viewer == OLH_VIEWER_HTML && FindHtmlDoc(location, docName, viewerPath) != 0);
    if (found) return is_pdf_location(location) ? OLH_VIEWER_PDF : OLH_VIEWER_HTML;
  }
  return kNotLocated;
}

}  // namespace

int OlhLocateDoc(char* location, const char* docName, char* viewerPath) noexcept {
  int kind = kNotLocated;
  if (location != nullptr && !olh::is_empty(docName) && olh::fits(docName))
    kind = is_path_or_url(docName) ? locate_path(location, docName, viewerPath)
                                   : locate_bare_name(location, docName, viewerPath);
  if (kind == kNotLocated) olh::clear_buffer(location);
  return kind;
}

int locate(Place& place, const char* docName) noexcept {
  return OlhLocateDoc(place.location, docName, place.viewerPath);
}

int show_in(int viewer, Place& place, const char* tag) noexcept {
  current_viewer = viewer;
  return showDocGotoTag(place.location, tag, place.viewerPath);
}

int show_not_found_pdf(Place& place) noexcept {
  return locate(place, kNotFoundPdf) == OLH_VIEWER_PDF ? show_in(OLH_VIEWER_PDF, place, nullptr) : kNotLocated;
}

void show_support_portal(Place& place) noexcept {
  current_viewer = OLH_VIEWER_HTML;
  if (!olh::kHasSupportPortal) return;
  olh::write_buffer(place.location, OLH_SUPPORT_PORTAL_URL "tomedeck.cfm?link=doc_not_found");
  show_in(OLH_VIEWER_HTML, place, nullptr);
}
