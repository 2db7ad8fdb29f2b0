#include "locate.h"

#include <array>
#include <nlohmann/json.hpp>
#include <utility>

#include "holdings.h"
#include "olh/support.h"
#include "places.h"
#include "shared.h"

namespace olh {

namespace {

// The lookups that a help call makes, in their order.
std::vector<Lookup> lookups_for(const std::string& document, OlhViewer preferred) {
  if (is_path_or_url(document)) {
    const bool as_pdf = !is_web_root(document) && ends_in_any_pdf(document);
    return {as_pdf ? FindPdfDoc : FindHtmlDoc};
  }
  std::vector<Lookup> lookups = {FindHtmlDoc, FindPdfDoc};
  if (preferred == OLH_VIEWER_PDF) std::swap(lookups[0], lookups[1]);
  if (is_portal_name(document)) lookups.insert(lookups.begin(), FindTomeDeck);
  return lookups;
}

// A path is what the lookup says; for a bare name the location decides.
OlhViewer viewer_of(const std::string& document, Lookup lookup, const std::string& location) {
  if (lookup == FindTomeDeck) return OLH_VIEWER_TOMEDECK;
  const bool is_pdf = is_path_or_url(document) ? lookup == FindPdfDoc : ends_in_pdf(location);
  return is_pdf ? OLH_VIEWER_PDF : OLH_VIEWER_HTML;
}

const SearchRoot* root_of(const std::string& document, const std::string& location, const SearchRoots& roots) {
  for (const Place& place : places_of(document, roots.preferred, paths_of(roots)))
    if (place.location == location)
      for (const SearchRoot& root : roots.roots)
        if (root.path == place.root) return &root;
  return nullptr;
}

// The root that a location lies below; the longest, since one root may lie in another.
const SearchRoot* root_around(const std::string& location, const SearchRoots& roots) {
  const std::string scheme = "file://";
  const std::string path = location.starts_with(scheme) ? location.substr(scheme.size()) : location;
  const SearchRoot* around = nullptr;
  for (const SearchRoot& root : roots.roots)
    if (path.starts_with(root.path + "/") && (around == nullptr || around->path.size() < root.path.size()))
      around = &root;
  return around;
}

Located answer_of(Lookup lookup, const std::string& name) {
  std::array<char, OLH_BUFFER_SIZE> location{};
  std::array<char, OLH_BUFFER_SIZE> viewer{};
  Located located;
  located.found = lookup(location.data(), name.c_str(), viewer.data()) == 1;
  if (!located.found) return located;
  located.location = location.data();
  located.tree_program = viewer.data();
  return located;
}

void take_root(Located& located, const SearchRoot* root) {
  if (root == nullptr) return;
  located.root = root->path;
  located.tree_file = located.tree_program == root->browser ? root->browser_from : root->reader_from;
}

}  // namespace

Located locate(const std::string& document, const SearchRoots& roots) {
  for (const Lookup lookup : lookups_for(document, roots.preferred)) {
    Located located = answer_of(lookup, document);
    if (!located.found) continue;
    located.kind = viewer_of(document, lookup, located.location);
    take_root(located, root_of(document, located.location, roots));
    return located;
  }
  return {};
}

Located locate_with(Lookup lookup, OlhViewer kind, const std::string& name, const SearchRoots& roots) {
  Located located = answer_of(lookup, name);
  located.kind = kind;
  if (located.found) take_root(located, root_around(located.location, roots));
  return located;
}

nlohmann::json located_as_json(const std::string& document, const Located& located) {
  return {{"document", document},
          {"found", located.found},
          {"location", text_or_null(located.location)},
          {"kind", located.found ? nlohmann::json(kind_name(located.kind)) : nlohmann::json(nullptr)},
          {"root", text_or_null(located.root)}};
}

void complain_about_roots(const SearchRoots& roots) {
  for (const JudgedRoot& one : roots.rejected)
    if (one.source == kRootOption)
      complain("--root " + one.path + " is no documentation root: it " + one.reason + ".");
  complain_about(roots.spoilt);
  complain_about(user_file_faults());
}

void complain_missing(const std::string& what, const std::string& looked_for, const SearchRoots& roots) {
  complain("no " + what + (roots.roots.empty() ? std::string(": ") + kNoRoot : looked_for));
}

int complain_not_found(const std::string& document, const SearchRoots& roots) {
  if (document.empty()) return failure(OLH_RESULT_INVALID, "a document's name is needed, not an empty one.");
  complain_missing("document " + quoted(document),
                   " below " + enumeration(paths_of(roots)) + ". 'olh where --all " + command_line({document}) +
                       "' lists every place that was tried.",
                   roots);
  const std::string manual = without_pdf(document);
  for (const SearchRoot& root : roots.roots)
    if (!is_path_or_url(document) && has_wrong_start_page(root.path, manual))
      complain(root.path + "/htmldocs/" + manual + " " + kWrongStartPage + ".");
  complain_about_roots(roots);
  return OLH_RESULT_NOT_FOUND;
}

}  // namespace olh
