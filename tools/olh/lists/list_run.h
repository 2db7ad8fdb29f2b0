// One run of the list generator, and what it came to.
//
// Knows    which files the generator writes, and how its records are counted while the run lasts.
// Not      what a person is told of it (dmerge_command).
// For      dmerge and new, list_trial.
#ifndef OLH_TOOLS_LIST_RUN_H
#define OLH_TOOLS_LIST_RUN_H

#include <algorithm>
#include <array>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "find.h"

namespace olh {

// What the generator writes, below the root. tdklist.js is only written when it is missing.
inline constexpr std::array kGeneratedLists = {kManualsLibraryList, "htmldocs/QEL/lib/LibraryAvailable.js",
                                               "tomedecks/basic.htm", kPortalsLibraryList, kInstalledPortals};

inline bool is_generated_list(const std::filesystem::path& relative) {
  return std::ranges::any_of(kGeneratedLists, [&](const char* list) { return relative == list; });
}

struct ListRun {
  std::string root;                            // as it was given, without slashes at its end
  bool has_root = false;                       // whether it was there and readable
  int result = 0;                              // a DmergeResult; portals that cannot be listed are a failure
  std::vector<std::string> messages;           // the generator's own, of a silent run
  std::vector<std::string> files;              // the lists that say what they should and can be read, in order
  std::vector<ListedDocument> documents;       // with the titles that the generator sees
  std::vector<std::string> titled_by_portals;  // the PDFs of these names have their titles from a portal
  std::vector<ListedItem> listed_portals;      // what the installed list names, with titles
  std::string release;                         // the release name of the basic page, "" for none
  std::size_t libraries = 0;                   // HTML manuals
  std::size_t pdfs = 0;                        // PDF documents
  std::size_t both = 0;                        // of these, documents in both forms
  std::size_t portals = 0;                     // portals that the installed list names
  double seconds = 0;
};

// Makes the lists of a root. `on_file` hears of each right after it was written or found true. With `shows_progress`
// the number of documents found so far appears on standard error while the run takes long.
ListRun make_lists(const std::string& root, const std::function<void(const std::string&)>& on_file,
                   bool shows_progress);

// The same, with what the generator prints kept in the run.
ListRun make_lists_silently(const std::string& root);

}  // namespace olh

#endif
