// Why a run of the list generator failed: which file, and what is wrong with it.
//
// Knows    the order in which lists are written: the one that failed is the first that is missing from the run,
//          but for those that may be written and not read.
// Not      the generator's own messages, which have reached standard output before.
// For      dmerge.
#ifndef OLH_TOOLS_LIST_FAILURE_H
#define OLH_TOOLS_LIST_FAILURE_H

#include <string>

#include "list_run.h"

namespace olh {

// A sentence about a run that failed.
std::string sentence_about_failure(const ListRun& run);

}  // namespace olh

#endif
