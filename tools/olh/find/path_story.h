// The story of how a search path came about, read out of the library's debug lines.
//
// Knows    the lines of SetOlhDocPath, ReadQelDocOptions, ValidDocPath and ValidURL, and what they tell together.
// Not      which root comes before which (search_roots asks a lookup for that), how the lines are caught
//          (debug_capture).
// For      search_roots, root_probe and alt_path_command.
#ifndef OLH_TOOLS_PATH_STORY_H
#define OLH_TOOLS_PATH_STORY_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "shared.h"

namespace olh {

// One place that was judged to be a root or none, where the story mentions it.
struct JudgedRoot {
  std::string path;
  bool accepted = false;
  std::string reason;        // why not, for a rejected one
  std::string source;        // the variable or option that led to it
  std::string options_file;  // the options file that names it or stands in it; "" when the source names it directly
  std::string parent;        // the root that has it as an alternate, "" when named directly
  std::string browser;       // what the options file prescribes
  std::string reader;
};

struct PathStory {
  std::vector<JudgedRoot> added;  // in the order in which they were added; a root may come again
  std::vector<JudgedRoot> rejected;
  std::vector<SpoiltFile> spoilt;
  std::optional<JudgedRoot> waiting;  // was asked, and had not answered when the lines ended
};

// Cuts the prefix off the line; false when it does not begin so.
bool cut_prefix(std::string_view& line, std::string_view prefix);

// Reads the lines of one piece of work. `source` is what led to roots before the first variable was read.
PathStory read_path_story(const std::vector<std::string>& lines, const std::string& source);

// Of the roots that one string named, judged once while it was split and the accepted ones again as they were added:
// the position of the first that was added. A root that repeats its predecessor ends the adding.
std::size_t first_added(const std::vector<JudgedRoot>& judged);

// Of one string that is split before the roots of the environment are gathered anew (OlhSetAltDocPath): what was
// rejected.
std::vector<JudgedRoot> rejected_by_split(const std::vector<std::string>& lines, const std::string& source);

}  // namespace olh

#endif
