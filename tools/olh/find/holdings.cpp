#include "holdings.h"

#include <map>

#include "files.h"
#include "olh/support.h"
#include "places.h"
#include "script_lists.h"
#include "shared.h"

namespace olh {

namespace {

using ByName = std::map<std::string, Holding>;

Holding& holding(ByName& all, const std::string& name) {
  Holding& found = all[name];
  found.name = name;
  return found;
}

bool is_there(const std::string& path) { return path_exists(path.c_str()) == 1; }

// ---- in a directory: what the lookups would find ----

std::string portal_page(const std::string& root, const std::string& name) {
  return root + "/tomedecks/" + name + "/index.html";
}

bool has_start_page(const std::string& root, const std::string& manual) {
  const std::string directory = root + "/htmldocs/" + manual + "/";
  return is_there(directory + "index.htm") || is_there(directory + manual + ".htm");
}

// The names in a directory of the root. When these are not all, neither is what they stand for.
std::vector<std::string> names_in(const std::string& directory, Holdings& found, bool Holdings::*is_known) {
  olh_viewers::DirectoryNames listed = olh_viewers::names_in(found.root + "/" + directory);
  if (!listed.why_not_all.empty()) {
    found.*is_known = false;
    found.half_read.push_back({directory, listed.why_not_all});
  }
  return std::move(listed.names);
}

void add_manuals(Holdings& found, ByName& all) {
  for (const std::string& name : names_in("htmldocs", found, &Holdings::documents_known)) {
    if (has_start_page(found.root, name)) holding(all, name).html = true;
    if (has_wrong_start_page(found.root, name)) found.unreachable.push_back(name);
  }
}

// A lookup appends ".pdf": a file that ends in ".PDF" is only found by its whole name.
void add_pdfs(Holdings& found, ByName& all) {
  for (const std::string directory : {"pdfdocs", "system_admin_docs"}) {
    const std::string place = olh_viewers::path_in(found.root, directory);
    for (const std::string& file : names_in(directory, found, &Holdings::documents_known))
      if (file.size() > 4 && ends_in_any_pdf(file) && is_there(olh_viewers::path_in(place, file)))
        holding(all, ends_in_pdf(file) ? file.substr(0, file.size() - 4) : file).pdf = true;
  }
}

void add_portals(Holdings& found, ByName& all) {
  for (const std::string& name : names_in("tomedecks", found, &Holdings::portals_known))
    if (is_there(portal_page(found.root, name))) holding(all, name).portal = true;
}

// The title of a portal that no list names, as the main one: that of its page.
void add_titles_of_pages(const std::string& root, ByName& all) {
  constexpr std::string_view kOpening = "<title>";
  for (auto& [name, one] : all) {
    if (!one.portal || !one.title.empty()) continue;
    const std::string page = olh_viewers::content_of(portal_page(root, name));
    const std::size_t begin = page.find(kOpening);
    const std::size_t end = page.find("</title>", begin);
    if (begin == std::string::npos || end == std::string::npos) continue;
    one.title = page.substr(begin + kOpening.size(), end - begin - kOpening.size());
  }
}

// ---- from the lists ----

using Documents = std::vector<ListedDocument>;
using Portals = std::vector<ListedItem>;

void add_listed(const Documents& documents, const Portals& portals, ByName& all) {
  for (const ListedDocument& document : documents) {
    holding(all, document.name).html |= document.html;
    holding(all, document.name).pdf |= document.pdf;
  }
  for (const ListedItem& portal : portals) holding(all, portal.name).portal = true;
}

void add_titles(const Documents& documents, const Portals& portals, ByName& all) {
  const auto give = [&all](const std::string& name, const std::string& title) {
    const auto known = all.find(name);
    if (known != all.end() && known->second.title.empty()) known->second.title = title;
  };
  for (const ListedDocument& document : documents) give(document.name, document.title);
  for (const ListedItem& portal : portals) give(portal.name, portal.title);
}

// ---- which root wins ----

// For each name, the first root in which a lookup finds something.
struct Winners {
  std::map<std::string, std::string> portal_lookup;
  std::map<std::string, std::string> html_lookup;  // takes a PDF or a portal's page where there is no manual
  std::map<std::string, std::string> pdf_lookup;   // behind a URL it takes a manual as well

  void add(const std::string& root, const Holding& one) {
    if (one.portal) portal_lookup.try_emplace(one.name, root);
    html_lookup.try_emplace(one.name, root);
    if (one.pdf || is_web_root(root)) pdf_lookup.try_emplace(one.name, root);
  }

  std::string root_of(const std::string& name, OlhViewer preferred) const {
    const auto portal = portal_lookup.find(name);
    if (portal != portal_lookup.end() && is_portal_name(name)) return portal->second;
    const auto pdf = pdf_lookup.find(name);
    if (pdf != pdf_lookup.end() && preferred == OLH_VIEWER_PDF) return pdf->second;
    return html_lookup.find(name)->second;
  }
};

}  // namespace

bool has_wrong_start_page(const std::string& root, const std::string& manual) {
  return !is_web_root(root) && !has_start_page(root, manual) &&
         is_there(root + "/htmldocs/" + manual + "/index.html");
}

Holdings holdings_of(const std::string& root) {
  Holdings found;
  found.root = root;
  ByName all;
  const auto known_documents = listed_documents(root);
  const auto known_portals = listed_portals(root);
  const Documents documents = known_documents.value_or(Documents());
  const Portals portals = known_portals.value_or(Portals());
  if (is_web_root(root)) {
    found.documents_known = known_documents.has_value();
    found.portals_known = known_portals.has_value();
    add_listed(documents, portals, all);
  } else {
    add_manuals(found, all);
    add_pdfs(found, all);
    add_portals(found, all);
  }
  add_titles(documents, portals, all);
  if (!is_web_root(root)) add_titles_of_pages(root, all);
  for (auto& [name, one] : all) found.all.push_back(std::move(one));
  return found;
}

void mark_shadowed(std::vector<Holdings>& roots, OlhViewer preferred) {
  Winners winners;
  for (const Holdings& root : roots)
    for (const Holding& one : root.all) winners.add(root.root, one);
  for (Holdings& root : roots)
    for (Holding& one : root.all) {
      const std::string winner = winners.root_of(one.name, preferred);
      if (winner != root.root) one.shadowed_by = winner;
    }
}

}  // namespace olh
