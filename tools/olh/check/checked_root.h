// A documentation root under check: what every check needs to know of it, read once.
//
// Knows    which directories are manuals, what their topic tables hold, and how a file is asked for: on the disk, or
//          behind a URL with the library's own probe.
// Not      what is a fault (the checks).
// For      check and its checks.
#ifndef OLH_TOOLS_CHECKED_ROOT_H
#define OLH_TOOLS_CHECKED_ROOT_H

#include <optional>
#include <string>
#include <vector>

#include "find.h"
#include "lists.h"
#include "topic_table.h"

namespace olh {

// Every place is below the root.
struct CheckedManual {
  std::string name;
  std::string directory;              // htmldocs/NAME
  std::string table;                  // its topic table
  std::optional<std::string> script;  // the text of the table
  std::vector<olh_viewers::TableTopic> topics;
};

struct CheckedRoot {
  std::string path;
  bool is_web = false;
  SearchRoots search;  // the search path of a process that knows this root alone
  Holdings holdings;
  std::vector<CheckedManual> manuals;
  std::optional<ListTrial> trial;  // of a directory
  std::string no_trial;            // why there is none
  std::string tags_file;           // lines of a document and a tag that a host uses; "" for none

  bool has(const std::string& relative) const;
  // The PDF of that name, below the root; "" when there is none.
  std::string pdf_named(const std::string& name) const;
  // The names in a directory of the root, in order; none behind a URL.
  std::vector<std::string> names_in(const std::string& directory) const;
};

// Makes ROOT the only root of this process: what the environment says of others is forgotten. Nothing when it is no
// documentation root or does not answer; `reason` is then the end of a sentence.
std::optional<CheckedRoot> read_root(const std::string& root, std::string& reason);

}  // namespace olh

#endif
