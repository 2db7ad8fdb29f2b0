// This program once more, in a process of its own: for a question that may never be answered.
//
// Knows    how long a child may be silent before it is left to itself.
// Not      what is asked (root_probe, path_trial).
// For      those two.
#ifndef OLH_TOOLS_OWN_CHILD_H
#define OLH_TOOLS_OWN_CHILD_H

#include <string>
#include <vector>

namespace olh {

inline constexpr int kSecondsOfPatience = 5;

struct OwnOutput {
  std::string text;
  bool in_time = true;  // false: it was silent for too long, and `text` is what it said until then
};

// What this program prints when it is called with these words; nothing when it cannot be run.
OwnOutput output_of_own_child(std::vector<std::string> words);

// "does not answer within 5 seconds".
std::string no_answer_in_time();

}  // namespace olh

#endif
