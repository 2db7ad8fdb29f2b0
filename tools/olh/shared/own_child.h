// This program once more, in a process of its own: for a question that may never be answered.
//
// Knows    how long a child may be silent before it is left to itself.
// Not      what is asked.
// For      root_probe, and showing, which asks what would be shown.
#ifndef OLH_TOOLS_OWN_CHILD_H
#define OLH_TOOLS_OWN_CHILD_H

#include <string>
#include <vector>

#include "child.h"

namespace olh {

inline constexpr int kSecondsOfPatience = 5;

// What this program prints when it is called with these words.
olh_viewers::Heard heard_from_own_child(std::vector<std::string> words);

// "does not answer within 5 seconds".
std::string no_answer_in_time();

}  // namespace olh

#endif
