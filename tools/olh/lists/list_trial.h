// The lists of a root, made on trial: what the generator would write and say, without a change to the root. The search
// index is not made, only compared with what it was made from.
//
// Knows    that a shadow of the root will do, in which the lists are missing and all else is a symbolic link.
// Not      what is in a list.
// For      dmerge --check, check and doctor.
#ifndef OLH_TOOLS_LIST_TRIAL_H
#define OLH_TOOLS_LIST_TRIAL_H

#include <string>
#include <vector>

#include "list_run.h"

namespace olh {

// How a list differs from the one that would be written.
struct ListChange {
  std::string file;  // below the root
  bool is_new = false;
  bool is_unreadable = false;  // no regular file, too large, or not to be read: nothing was compared
  int more = 0;                // lines that would be added
  int less = 0;                // lines that would go; of the search index neither is counted
};

struct ListTrial {
  ListRun run;
  std::vector<ListChange> changes;  // the order of lines does not count: it is that of names in a file system
  std::string failure;              // a sentence; "" when the lists could be made
};

// with_index: whether the search index is looked at, too. Throws std::runtime_error when the root cannot be listed, or there is
// no place for a trial.
ListTrial try_lists(const std::string& root, bool with_index = true);

// "is missing", "cannot be read...", "is out of date: 1 line to add, 2 lines to remove", or what is wrong with the index.
std::string state_of(const ListChange& change);

}  // namespace olh

#endif
