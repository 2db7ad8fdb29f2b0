#include "portal_text.h"

#include <algorithm>
#include <vector>

#include "find.h"
#include "shared.h"

namespace olh {

namespace {

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

}  // namespace

std::string portal_as_text(const std::string& root, const std::string& portal) {
  if (portal.empty()) return main_page_as_text(root);
  std::vector<Entry> documents;
  for (const ListedItem& item :
       items_in_list(text_in_root(root, "tomedecks/" + portal + "/js/doclist.js").value_or("")))
    documents.push_back({item.name, item.title});
  return hint(paragraph("Documents of the portal " + portal, documents), "'olh show NAME' shows a document.\n");
}

}  // namespace olh
