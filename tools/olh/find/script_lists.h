// What the lists of a documentation root say: scripts that the generator writes and the portal's pages run.
//
// Knows    the lines of LibList.js (both of them), tdklist_installed.js and doclist.js, and where the first three lie.
// Not      whether what they name is there.
// For      list and check.
#ifndef OLH_TOOLS_SCRIPT_LISTS_H
#define OLH_TOOLS_SCRIPT_LISTS_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace olh {

inline constexpr const char* kPortalsLibraryList = "tomedecks/qel_td/js/LibList.js";
inline constexpr const char* kManualsLibraryList = "htmldocs/QEL/lib/LibList.js";
inline constexpr const char* kListOfPortals = "tomedecks/qel_td/js/tdklist.js";  // written by hand
inline constexpr const char* kInstalledPortals = "tomedecks/qel_td/js/tdklist_installed.js";

struct ListedDocument {
  std::string name;
  std::string title;  // "" when the list does not give it
  bool html = false;
  bool pdf = false;
};

struct ListedItem {
  int line = 0;
  std::string name;
  std::string title;
};

// The documents of either LibList.js.
std::vector<ListedDocument> documents_in_list(std::string_view script);
// The items of tdklist_installed.js (the names of portals) or doclist.js (those of documents); what is commented out
// does not count.
std::vector<ListedItem> items_in_list(std::string_view script);

// The documents and portals that the lists of a root name; nothing for a list that cannot be read.
std::optional<std::vector<ListedDocument>> listed_documents(const std::string& root);
std::optional<std::vector<ListedItem>> listed_portals(const std::string& root);

// The text between the first two double quotes (0), the next two (1), and so on; nothing without them.
std::optional<std::string> quoted_in(std::string_view line, int index);

}  // namespace olh

#endif
