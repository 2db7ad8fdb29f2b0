// The titles that portals give to the PDF documents of the root.
//
// Knows    which items of a portal's document list count.
// Not      which document gets such a title in the end (library_extraction).
// For      the driver, as its second step.
#include <cstdio>
#include <string>
#include <string_view>

#include "directory.h"
#include "line_reader.h"
#include "paths.h"
#include "registries.h"
#include "script_line.h"
#include "step.h"

namespace olh {

namespace {

// List.fAddItem( "TITLE", "NAME"... counts when no "//" stands before it, NAME is no link and its PDF is there.
void take_item(std::string_view root, std::string_view line) {
  const std::size_t item = line.find(kAddItem);
  if (item == std::string_view::npos || contains(line.substr(0, item), "//")) return;
  const std::string_view arguments = line.substr(item);
  const auto title = quoted(arguments, 0);
  const auto name = quoted(arguments, 1);
  if (!title || !name || contains(*name, "/")) return;
  if (pathExists(clean_path({root, "/pdfdocs/", *name, ".pdf"}).c_str()) != 0) add_pdf_title(*title, *name);
}

int collect_titles(std::string_view root) {
  const std::string portals_path = clean_path({root, "/tomedecks/"});
  if (pathExists(portals_path.c_str()) == 0) return DMERGE_RESULT_OK;
  Directory portals(portals_path.c_str());
  while (const char* portal = portals.next()) {
    const std::string path = clean_path({portals_path, "/", portal, "/js/doclist.js"});
    if (pathExists(path.c_str()) == 0) continue;
    LineReader script(path.c_str(), kLongestLine);
    for (std::string_view line; script.next(line);) take_item(root, line);
  }
  if (portals && !portals.failed()) return DMERGE_RESULT_OK;
  std::printf("ERROR: generateDocLists: unable to open %s\n", portals_path.c_str());
  return DMERGE_RESULT_UNLISTABLE;
}

}  // namespace

}  // namespace olh

int generateDocLists(char* root) noexcept {
  return olh::run_step(DMERGE_RESULT_UNLISTABLE, root, olh::collect_titles);
}
