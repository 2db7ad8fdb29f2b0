// The import of one manual, from the source to its place in a root.
//
// Knows    the order of the steps: nothing of the root changes before all of them are done.
// Not      what kinds of sources there are (readers), what a person is told of it (main).
// For      main.
#ifndef OLH_IMPORT_IMPORT_MANUAL_H
#define OLH_IMPORT_IMPORT_MANUAL_H

#include <functional>
#include <string>
#include <vector>

#include "arranged_topics.h"
#include "manual_origin.h"
#include "output_folder.h"
#include "words.h"

namespace olh_import {

struct ImportRequest {
  std::string root;  // an absolute path
  std::string name;
  std::vector<std::string> sources;
  std::string title;                          // "": the source's own
  std::string start;                          // "": the source's own
  std::vector<std::string> places;            // of a PDF, as "TAG=PAGE"
  std::vector<std::string> wanted;            // patterns of pages, in which "*" goes for "/" too; none: every page
  std::string verb = olh_viewers::kByImport;  // for the mark of origin
  bool link = false;
  bool dry_run = false;

  // Where the two forms of the document lie.
  std::string place_of_pages() const { return root + "/htmldocs/" + name; }
  std::string place_of_pdf() const { return root + "/pdfdocs/" + name + ".pdf"; }
};

struct ImportOutcome {
  std::string kind;  // of the source
  std::string title;
  std::size_t pages = 0;
  std::vector<std::string> topics;  // their names; of a PDF, tags
  std::vector<SameName> same_names;
  std::vector<std::string> notes;  // sentences
};

// Only what an import has brought gives way to another; what a person has imported does not give way to a registration.
void refuse_what_others_brought(const ImportRequest& asked, const std::string& place, const std::string& brought_by);

// A root with what pages of manuals read; made if it is not there. With "--portals", also what shows portals.
void prepare_root(const std::string& root, const olh_viewers::Words& options = {});

// The same, right before a document takes its place; and the root gets what its pages read. One that is not there is made
// only now: an import that fails leaves none behind.
void make_room(const ImportRequest& asked, const std::string& place, const std::string& brought_by);

// `progress` hears of each page; `place` puts what is ready in its place. Throws a Refusal.
ImportOutcome import_manual(
    const ImportRequest& asked, const std::function<void(std::size_t done, std::size_t of)>& progress,
    const std::function<void(OutputFolder& pages)>& place = [](OutputFolder& pages) { pages.take_place(); });

}  // namespace olh_import

#endif
