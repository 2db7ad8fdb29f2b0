// The help call: a document at a tag, or the best substitute for what is missing; and the test that shows
// nothing.
#include "bounded_text.h"
#include "entry_point.h"
#include "locate.h"
#include "names.h"
#include "olh/support.h"
#include "one_thread.h"
#include "viewer_order.h"

namespace {

constexpr char kBookcasePdf[] = "_bk_qel.pdf";
constexpr char kGeneralHelp[] = "qel_html_help";
constexpr char kGeneralHelpTopic[] = "qel_help_014";

// No browser is known. A PDF behind a URL gives way to the portal; everything else to the bookcase in the PDF
// reader, which leads the viewer order from now on.
void show_without_browser(int kind, Place& place) noexcept {
  if (kind == OLH_VIEWER_PDF) {
    OlhTomeDeck(nullptr, nullptr);
    return;
  }
  OlhSetViewer(OLH_VIEWER_PDF, 1);
  if (locate(place, kBookcasePdf) == OLH_VIEWER_PDF) show_in(OLH_VIEWER_PDF, place, nullptr);
}

// The document is nowhere: the general help, else the not-found PDF unless its reader fails, else the support
// portal.
void show_not_found(int displayType, Place& place) noexcept {
  const int kind = locate(place, kGeneralHelp);
  if (kind == OLH_VIEWER_PDF || kind == OLH_VIEWER_HTML) {
    SetOlhDisplayType(displayType);
    show_in(kind, place, kGeneralHelpTopic);
    return;
  }
  if (locate(place, kNotFoundPdf) == OLH_VIEWER_PDF) {
    SetOlhDisplayType(displayType);
    if (show_in(OLH_VIEWER_PDF, place, nullptr) != OLH_RESULT_IO) return;
  }
  show_support_portal(place);
}

}  // namespace

int OlhHelpCall(const char* docName, const char* tag, int displayType) noexcept {
  const olh::EntryPoint call("OlhHelpCall", docName, tag, OlhDisplayType_toString(displayType));
  setDebugVariable();
  if (olh::is_empty(docName)) return call.failed(OLH_RESULT_INVALID);

  Place place;
  const int kind = locate(place, docName);
  if (kind == kNotLocated) {
    show_not_found(displayType, place);
    return call.done(OLH_RESULT_NOT_FOUND);
  }
  SetOlhDisplayType(displayType);
  const int result = show_in(kind, place, tag);
  if (result == OLH_RESULT_NO_PROGRAM) show_without_browser(kind, place);
  return call.done(result);
}

int OlhDocGotoTag(const char* docName, const char* tag) noexcept {
  const olh::EntryPoint call("OlhDocGotoTag", docName, tag);
  return call.done(OlhHelpCall(docName, tag, OLH_DISPLAY_NORMAL));
}

int OlhHelpTest(const char* docName, const char* tag) noexcept {
  const olh::OneThread inside;
  OlhDocListInit();
  setDebugVariable();
  const olh::EntryPoint call("OlhHelpTest", docName, tag);
  if (olh::is_empty(docName)) return call.failed(OLH_RESULT_INVALID);

  Place place;
  const int kind = locate(place, docName);
  if (kind == kNotLocated) return call.failed(OLH_RESULT_NOT_FOUND);
  current_viewer = kind;
  if (kind == OLH_VIEWER_HTML && !olh::is_empty(tag)) {
    char topic[OLH_BUFFER_SIZE];
    olh::write_buffer(topic, tag);  // a tag that does not fit is no topic of any manual
    FormatTopic(topic);
    if (FindHtmlTopic(place.location, topic, nullptr) == 0) return call.failed(OLH_RESULT_NO_TOPIC);
  }
  return call.done(OLH_RESULT_OK);
}
