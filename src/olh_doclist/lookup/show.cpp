// A location is handed to its viewer; so is a search; and a viewer is asked or started without either.
//
// Knows    which launcher serves which kind of document, and the URLs of portal tabs and search pages.
// Not      how topics and destinations are written (url_build), how a program is chosen and started (the launchers).
// For      the wrappers.
#include <algorithm>
#include <string>
#include <string_view>

#include "bounded_text.h"
#include "olh/support.h"
#include "olh_doclist.h"
#include "support_portal.h"
#include "url_build.h"

namespace olh {

namespace {

// No URL came out, or one that does not fit.
int no_url() noexcept {
  print_debug("olh_docList::showDocGotoTag: failed: url error\n");
  return OLH_RESULT_FAILED;
}

int open_url(const std::string& url, const char* viewer_path) {
  if (url.empty() || url.size() >= kUrlSize) return no_url();
  return OlhBrowserOpenURL(url.c_str(), viewer_path);
}

// A PDF behind a URL is the browser's business, any other the reader's.
int show_pdf(olh_docList& locator, const char* doc, std::string_view tag, const char* viewer_path) {
  char destination[kUrlSize] = "";
  if (!tag.empty()) {
    if (!write_buffer(destination, tag, sizeof destination)) return no_url();
    locator.FormatNewlink(destination);
    if (*destination == '\0') return no_url();
  }
  if (is_url(doc) == 0) return OlhAcroDocOpen(doc, destination, viewer_path);
  char url[kUrlSize];
  locator.BuildPDFNewlinkURL(url, doc, destination);
  return open_url(url, viewer_path);
}

int show_html(olh_docList& locator, const char* doc, const char* tag, const char* viewer_path) {
  char url[kUrlSize];
  locator.BuildFullURL(url, doc, tag);
  return open_url(url, viewer_path);
}

//   location                            tab    url, before it is encoded
//   any, also ""                        none   LOCATION
//   .../tomedecks/index.html            TAB    LOCATION?tab=TAB
//   any other                           TAB    LOCATION&tab=TAB
int show_portal(std::string_view doc, std::string_view tab, const char* viewer_path) {
  std::string url(doc);
  if (!tab.empty()) url.append(doc.ends_with("/tomedecks/index.html") ? "?tab=" : "&tab=").append(tab);
  url = encoded(url);
  return url.size() < kUrlSize ? OlhBrowserOpenURL(url.c_str(), viewer_path) : no_url();
}

// The words of a query without what would end the query in a URL.
std::string searchable(std::string_view query) {
  std::string words(query);
  std::replace_if(
      words.begin(), words.end(), [](char byte) { return byte == '&' || byte == '#' || byte == '?'; }, ' ');
  return words;
}

//   name    url
//   none    PORTAL/tomedeck.cfm?query=WORDS&field=olh
//   NAME    PORTAL/tomedeck.cfm?query=WORDS&tdk=NAME&field=olh
std::string support_portal_url(const std::string& words, std::string_view name) {
  std::string url = OLH_SUPPORT_PORTAL_URL "tomedeck.cfm?query=" + words;
  if (!name.empty()) url.append("&tdk=").append(name);
  return url + "&field=olh";
}

// BASE is the root as a URL. The first line that matches:
//
//   scope    name    url
//   any      none    BASE/index.html#query=WORDS&tab=search
//   "doc"    NAME    BASE/htmldocs/qelhelp.htm#context=NAME&query=WORDS&tab=2&src=doc
//   any      NAME    BASE/index.html#tomedeck=NAME&query=WORDS&tab=search
std::string search_url(std::string base, const std::string& words, std::string_view scope, std::string_view name) {
  if (name.empty()) return base + "/index.html#query=" + words + "&tab=search";
  if (scope == "doc")
    return base.append("/htmldocs/qelhelp.htm#context=").append(name) + "&query=" + words + "&tab=2&src=doc";
  return base.append("/index.html#tomedeck=").append(name) + "&query=" + words + "&tab=search";
}

int open_search(const std::string& url, const char* viewer_path) {
  return url.size() < kUrlSize ? OlhBrowserOpenURL(url.c_str(), viewer_path) : OLH_RESULT_FAILED;
}

int search_support_portal(const std::string& words, std::string_view name) {
  if (!kHasSupportPortal) return OLH_RESULT_NOT_FOUND;
  return open_search(encoded(support_portal_url(words, name)), nullptr);
}

int search_documentation(const char* root, const std::string& words, std::string_view scope, std::string_view name) {
  if (is_empty(root)) return OLH_RESULT_FAILED;
  const bool is_local = is_url(root) == 0;
  if (is_local && path_exists(root) == 0) return OLH_RESULT_NOT_FOUND;
  std::string url = encoded(search_url(is_local ? std::string(kFileScheme) + root : root, words, scope, name));
  urlslash(url.data());
  if (is_local) print_debug("olh_docList::HtmlSearch: url: %s\n", url.c_str());
  return open_search(url, "");
}

}  // namespace

}  // namespace olh

int olh_docList::showDocGotoTag(const char* doc, const char* tag, char* viewer_path) {
  print_debug("olh_docList::showDocGotoTag\n");
  if (!olh::is_empty(viewer_path)) print_debug("olh_docList::showDocGotoTag: viewer_path: %s\n", viewer_path);
  int result = OLH_RESULT_FAILED;
  switch (OlhGetCurrentViewer()) {
    case OLH_VIEWER_PDF:
      result = olh::show_pdf(*this, doc, olh::text_of(tag), viewer_path);
      break;
    case OLH_VIEWER_HTML:
      result = olh::show_html(*this, doc, tag, viewer_path);
      break;
    case OLH_VIEWER_TOMEDECK:
      result = olh::show_portal(olh::text_of(doc), olh::text_of(tag), viewer_path);
      break;
    default:
      print_debug("olh_docList::showDocGotoTag: failed: unknown viewer\n");
  }
  print_debug("olh_docList::showDocGotoTag: done\n");
  return result;
}

int olh_docList::HtmlSearch(const char* query, const char* scope, const char* name) {
  print_debug("olh_docList::HtmlSearch\n");
  if (olh::is_empty(query) || olh::is_empty(scope)) {
    print_debug("olh_docList::HtmlSearch: failed: invalid args\n");
    return OLH_RESULT_FAILED;
  }
  const std::string words = olh::searchable(query);
  const std::string_view where = olh::text_of(name);
  const int result = std::string_view(scope) == "orvn"
                         ? olh::search_support_portal(words, where)
                         : olh::search_documentation(mCurrentDocPath, words, scope, where);
  print_debug("olh_docList::HtmlSearch: done\n");
  return result;
}

int olh_docList::isViewerRunning(int viewer) {
  if (viewer == OLH_VIEWER_PDF) return OlhAcroIsViewerRunning();
  if (viewer == OLH_VIEWER_HTML) return OlhBrowserRunning();
  print_debug("olh_docList::isViewerRunning: failed (unknown viewer)\n");
  return OLH_RESULT_FAILED;
}

int olh_docList::startViewer() {
  switch (OlhGetCurrentViewer()) {
    case OLH_VIEWER_PDF:
      return OlhAcroDocOpen(nullptr, nullptr, nullptr);
    case OLH_VIEWER_HTML:
      return OlhBrowserOpenURL(nullptr, nullptr);
    default:
      print_debug("olh_docList::startViewer: failed (unknown viewer)\n");
      return OLH_RESULT_FAILED;
  }
}

// A viewer belongs to the user: it is never ended from here.
int olh_docList::exitViewer() { return OLH_RESULT_FAILED; }
