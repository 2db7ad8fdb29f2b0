// Searching the documentation.
#include <string_view>

#include "bounded_text.h"
#include "entry_point.h"
#include "locate.h"
#include "olh/support.h"
#include "support_portal.h"

namespace {

constexpr std::string_view kSupportPortalScope = "orvane";

// What HtmlSearch is asked for. A scope that cannot be searched has no keyword.
struct Scope {
  const char* keyword;
  const char* name;
};

// Looking the scope up leaves its documentation root in the locator, which HtmlSearch builds its URL from:
//   none            "lib"   everything below the root that holds the portal
//   orvane          "orvn"  the support portal; nothing is looked up; a build without one: -
//   a manual        "doc"
//   a portal        "tdk"
//   a PDF, nothing  -
Scope scope_of(const char* scope) noexcept {
  Place place;
  if (olh::is_empty(scope)) return {FindTomeDeck(place.location, "", place.viewerPath) != 0 ? "lib" : nullptr, ""};
  if (scope == kSupportPortalScope) return {olh::kHasSupportPortal ? "orvn" : nullptr, ""};
  switch (locate(place, scope)) {
    case OLH_VIEWER_HTML:
      return {"doc", scope};
    case OLH_VIEWER_TOMEDECK:
      return {"tdk", scope};
    default:
      return {nullptr, ""};
  }
}

}  // namespace

int OlhSearch(const char* query, const char* scope) noexcept {
  const olh::EntryPoint call("OlhSearch", query, scope);
  if (olh::is_empty(query)) return call.failed_invalid_argument(OLH_RESULT_INVALID);
  const Scope searched = scope_of(scope);
  if (searched.keyword == nullptr) return call.failed(OLH_RESULT_NOT_FOUND);
  return call.done(HtmlSearch(query, searched.keyword, searched.name));
}
