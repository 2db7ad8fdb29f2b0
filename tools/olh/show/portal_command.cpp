// olh portal [NAME] [TAB] and olh bookcase [NAME] [TAG]: the two ways into all documentation.
#include <algorithm>
#include <vector>

#include "find.h"
#include "olh/support.h"
#include "shared.h"
#include "show.h"
#include "showing.h"

namespace olh {

namespace {

constexpr const char* kPortalExamples =
    "Without a name: the portals' main page.\n"
    "Examples:\n"
    "  olh portal\n"
    "  olh portal olh_td\n"
    "  olh portal --print olh_td search   what would be run; nothing is started\n"
    "  olh portal '' search               a tab of the main page\n"
    "Without a display: the portals and documents that it shows, as a list.\n"
    "Exit code: 0 shown, 2 the browser failed or would show nothing, 4 no such portal, 7 no browser\n"
    "known, 64 wrong use.\n";

constexpr const char* kBookcaseExamples =
    "Without a name: _bk_qel.pdf, which lists the documentation of a root.\n"
    "Examples:\n"
    "  olh bookcase\n"
    "  olh bookcase olh_manual quick_start\n"
    "  olh bookcase --print\n"
    "Exit code: 0 shown, 2 the browser failed (a PDF on a web server) or a viewer would show nothing, 4 no\n"
    "such PDF, 5 the PDF reader failed, 7 no browser known, 64 wrong use.\n";

constexpr const char* kBookcase = "_bk_qel.pdf";

struct PortalArguments {
  std::string name;
  std::string tag;
  ShowOptions options;
};

// ---- what a portal shows, as text for a terminal without a display ----

struct Entry {
  std::string name;
  std::string title;
};

// A heading and a line for each entry; "" without entries.
std::string paragraph(const std::string& heading, const std::vector<Entry>& entries) {
  if (entries.empty()) return "";
  std::size_t width = 0;
  for (const Entry& entry : entries) width = std::max(width, width_of(visible(entry.name)));
  std::string text = visible(heading) + ":\n";
  for (const Entry& entry : entries) {
    const std::string name = visible(entry.name);
    text += "  " + (entry.title.empty() ? name : padded(name, width) + "  " + visible(entry.title)) + "\n";
  }
  return text + "\n";
}

std::string hint(const std::string& text, const char* sentence) { return text.empty() ? "" : text + sentence; }

std::string main_page_as_text(const std::string& root) {
  std::vector<Entry> portals;
  std::vector<Entry> documents;
  for (const Holding& one : holdings_of(root).all) {
    if (one.portal) portals.push_back({one.name, one.title});
    if (one.html || one.pdf) documents.push_back({one.name, one.title});
  }
  return hint(paragraph("Portals of " + root, portals) + paragraph("Documents of " + root, documents),
              "'olh portal NAME' lists the documents of a portal, 'olh show NAME' shows a document.\n");
}

// The documents of a portal; of the main page ("") all portals and documents of the root. "" when nothing is listed.
std::string portal_as_text(const std::string& root, const std::string& portal) {
  if (portal.empty()) return main_page_as_text(root);
  std::vector<Entry> documents;
  for (const ListedItem& item :
       items_in_list(text_in_root(root, "tomedecks/" + portal + "/js/doclist.js").value_or("")))
    documents.push_back({item.name, item.title});
  return hint(paragraph("Documents of the portal " + portal, documents), "'olh show NAME' shows a document.\n");
}

// ---- showing ----

void complain_of_file(const std::string& what, const std::string& file, const SearchRoots& roots) {
  complain_missing(
      what, ": there is no " + file + " below " + enumeration(paths_of(roots)) + ". 'olh list' prints what there is.",
      roots);
  complain_about_roots(roots);
}

int portal(const PortalArguments& asked) {
  const SearchRoots roots = find_search_roots(asked.options.root);
  const Located located = locate_with(FindTomeDeck, OLH_VIEWER_TOMEDECK, asked.name, roots);
  ShowRequest request = request_for("portal", asked.name, asked.tag, located);
  request.text = [&] { return portal_as_text(located.root, asked.name); };
  request.call = [&] { return OlhTomeDeck(asked.name.c_str(), asked.tag.c_str()); };
  request.complain_of = [&](int) {
    if (asked.name.empty()) return complain_of_file("main page of the portals", "tomedecks/index.html", roots);
    complain_of_file("portal " + quoted(asked.name), "tomedecks/" + asked.name + "/index.html", roots);
  };
  return carry_out(request, asked.options, roots);
}

int bookcase(const PortalArguments& asked) {
  const SearchRoots roots = find_search_roots(asked.options.root);
  const std::string name = asked.name.empty() ? kBookcase : asked.name;
  const Located located = locate_with(FindPdfDoc, OLH_VIEWER_PDF, name, roots);
  ShowRequest request = request_for("bookcase", name, asked.tag, located);
  request.call = [&] { return OlhBookcase(name.c_str(), asked.tag.c_str()); };
  request.complain_of = [&](int) {
    const std::string file = with_pdf(name);
    complain_of_file("bookcase " + quoted(name), "pdfdocs/" + file + " or system_admin_docs/" + file, roots);
  };
  return carry_out(request, asked.options, roots);
}

void add_arguments(const Verb& verb, PortalArguments& asked, const char* name, const char* tag_name,
                   const char* tag) {
  verb.option("NAME", asked.name, name);
  verb.option(tag_name, asked.tag, tag);
  add_show_options(verb, asked.options);
}

}  // namespace

void add_portal_command(const Verb& olh) {
  const Verb verb = olh.verb("portal", "Show a documentation portal", kPortalExamples);
  PortalArguments& asked = verb.action(portal);
  add_arguments(verb, asked, "A portal's directory below tomedecks", "TAB", "The tab to open");
}

void add_bookcase_command(const Verb& olh) {
  const Verb verb = olh.verb("bookcase", "Show the PDF that lists the documentation", kBookcaseExamples);
  PortalArguments& asked = verb.action(bookcase);
  add_arguments(verb, asked, "A PDF, with or without .pdf", "TAG", "A named destination in it");
}

}  // namespace olh
