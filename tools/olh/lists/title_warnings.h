// Titles and names that are more than text.
//
// Knows    that the generator puts titles and names into scripts and into a page as they are, and which characters mean
//          something there.
// Not      how a warning is printed (dmerge_command, check).
// For      dmerge, new and check.
#ifndef OLH_TOOLS_TITLE_WARNINGS_H
#define OLH_TOOLS_TITLE_WARNINGS_H

#include <string>
#include <vector>

#include "list_run.h"

namespace olh {

struct TitleWarning {
  std::string file;  // below the root: what the title or name comes from
  int line = 0;      // 0: the file as such
  std::string what;  // "gives the title"
  std::string text;
  std::string harm;
};

// Goes on after the file's name, without the full stop.
std::string sentence_of(const TitleWarning& one);

// Whether a character means something in a script or a page.
bool is_more_than_text(char c);

// Of the documents, the portals and the release that a run has listed; `root` is where their lines are looked for.
std::vector<TitleWarning> title_warnings(const ListRun& run, const std::string& root);

}  // namespace olh

#endif
