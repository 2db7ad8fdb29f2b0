// Checks of portals: the list that names them, their own files, and the documents that they name.
#include <cstdlib>
#include <set>

#include "checks.h"
#include "olh/dmerge.h"
#include "shared.h"

namespace olh {

namespace {

constexpr const char* kMainPortal = "qel_td";
constexpr const char* kPages = "common";

std::string folder_of(const std::string& portal) { return "tomedecks/" + portal; }
std::string page_of(const std::string& portal) { return folder_of(portal) + "/index.html"; }
std::string script_of(const std::string& portal) { return folder_of(portal) + "/js/doclist.js"; }

// Every portal that has one of the two files which make it one.
std::vector<std::string> portals_in(const CheckedRoot& root) {
  std::vector<std::string> portals;
  if (root.is_web) {
    for (const Holding& one : root.holdings.all)
      if (one.portal) portals.push_back(one.name);
  }
  for (const std::string& name : root.names_in("tomedecks"))
    if (name != kPages && (root.has(page_of(name)) || root.has(script_of(name)))) portals.push_back(name);
  return portals;
}

// The name that the generator sees in a portal's own script; nothing behind a URL.
bool has_name(const CheckedRoot& root, const std::string& portal) {
  std::string path = root.path;
  std::string name = portal;
  char* title = getTitle(path.data(), name.data());
  const bool named = title != nullptr && *title != '\0';
  std::free(title);
  return named;
}

std::string document_named(const std::string& name) {
  return name.ends_with(".pdf") ? name.substr(0, name.size() - 4) : name;
}

}  // namespace

void check_portal_list(const CheckedRoot& root, Findings& findings) {
  const auto listed = listed_portals(root.path);
  if (!listed) return;  // check_lists says so
  std::set<std::string> names;
  for (const ListedItem& item : *listed) {
    names.insert(item.name);
    if (!root.has(script_of(item.name)))
      findings.error({kInstalledPortals, item.line}, "names the portal \"{}\", which has no js/doclist.js",
                     item.name);
  }
  for (const std::string& portal : portals_in(root))
    if (portal != kMainPortal && !names.contains(portal))
      findings.warning({folder_of(portal)}, "is a portal that {} does not name", kInstalledPortals);
}

void check_portal_files(const CheckedRoot& root, Findings& findings) {
  for (const std::string& portal : portals_in(root)) {
    const bool has_script = root.has(script_of(portal));
    if (!root.has(page_of(portal)))
      findings.error({page_of(portal)}, "is not there, so that no help call finds the portal");
    if (!has_script && !root.is_web)
      findings.error({script_of(portal)}, "is not there, so that the portal has neither a name nor documents");
    const bool is_read = has_script && (root.is_web || text_in_root(root.path, script_of(portal)));
    if (has_script && !is_read)
      findings.error({script_of(portal)}, "cannot be read, so that the portal has neither a name nor documents");
    if (is_read && !root.is_web && !has_name(root, portal))
      findings.warning({script_of(portal)},
                       "gives no name (mTomeDeckName = \"...\"), so that no list shows the portal");
    if (!portal.ends_with("_td"))
      findings.warning({folder_of(portal)}, "does not end in _td, so that a help call does not take it for a portal");
  }
}

void check_portal_documents(const CheckedRoot& root, Findings& findings) {
  if (!root.holdings.documents_known) return;
  std::set<std::string> known;
  for (const Holding& one : root.holdings.all)
    if (one.html || one.pdf) known.insert(one.name);
  for (const std::string& portal : portals_in(root))
    for (const ListedItem& item : items_in_list(text_in_root(root.path, script_of(portal)).value_or("")))
      if (item.name.find('/') == std::string::npos && !known.contains(document_named(item.name)))
        findings.warning({script_of(portal), item.line}, "names the document \"{}\", which is not in this root",
                         item.name);
}

}  // namespace olh
