// The search path as it stands: every root in order, with where it comes from, and what was rejected.
//
// Knows    that a lookup names the roots as it walks along them, and that a name too long for any file makes it walk
//          along all of them without asking one.
// Not      what the lines of first use mean (path_story).
// For      every verb that looks documents up. It is the first thing such a verb does: it brings about first use.
#ifndef OLH_TOOLS_SEARCH_ROOTS_H
#define OLH_TOOLS_SEARCH_ROOTS_H

#include <string>
#include <vector>

#include "olh/olh.h"
#include "path_story.h"

namespace olh {

// Where the root comes from that this program searches behind all others, and no other program does: its own.
inline constexpr const char* kOwnSource = "olh";
// Where those come from that the caller puts in front.
inline constexpr const char* kRootOption = "--root";

struct SearchRoot {
  std::string path;
  std::string source;        // the variable that led to it, --root, or kOwnSource
  std::string options_file;  // the options file that names it as an alternate, "" when named directly
  std::string parent;        // its parent tree, "" when named directly
  std::string browser;       // the programs that the tree prescribes, "" for none
  std::string browser_from;  // and the options file that names each
  std::string reader;
  std::string reader_from;
};

struct SearchRoots {
  std::vector<SearchRoot> roots;  // the first wins
  std::vector<JudgedRoot> rejected;
  std::vector<SpoiltFile> spoilt;         // options files of roots that could not be read
  OlhViewer preferred = OLH_VIEWER_HTML;  // the front of the viewer order
};

// Initialises the library, puts `host_roots` in front (as --root asks; "" for none) and this program's own root behind
// all others unless OLH_SYSTEM_DOC_PATH is set to nothing, and tells what came of it.
SearchRoots find_search_roots(const std::string& host_roots);

// The paths alone.
std::vector<std::string> paths_of(const SearchRoots& roots);

// The options file that belongs to the first root, or to its parent tree. There must be a root.
std::string tree_options_file(const SearchRoots& roots);

}  // namespace olh

#endif
