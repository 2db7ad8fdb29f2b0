// The lists of a root, made on trial: what the generator would write and say, without a change to the root.
//
// For      dmerge --check, check and doctor.
#ifndef OLH_TOOLS_LIST_TRIAL_H
#define OLH_TOOLS_LIST_TRIAL_H

#include <string>
#include <vector>

#include "list_run.h"
#include "shadow_root.h"

namespace olh {

struct ListTrial {
  ListRun run;
  std::vector<ListChange> changes;
  std::vector<std::string> messages;  // the generator's own
  std::string failure;                // a sentence; "" when the lists could be made
};

// Throws std::runtime_error when the root cannot be listed, or there is no place for a trial.
ListTrial try_lists(const std::string& root);

// "is missing", "cannot be read...", or "is out of date: 1 line to add, 2 lines to remove".
std::string state_of(const ListChange& change);

}  // namespace olh

#endif
