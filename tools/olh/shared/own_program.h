// This program itself: what was installed, or built, together with it, and itself once more, in a process of its own.
//
// Knows    where its data lie, seen from itself; how long a child may be silent before it is left to itself.
// Not      what is done with the data, what a child is asked.
// For      search_roots, doctor, and new, which copies pages; root_probe and showing, which ask what may never be answered.
#ifndef OLH_TOOLS_OWN_PROGRAM_H
#define OLH_TOOLS_OWN_PROGRAM_H

#include <filesystem>
#include <string>
#include <vector>

#include "child.h"

namespace olh {

// The directory that holds "docs", the documentation root with the manual of this program; empty when it is not there.
std::filesystem::path own_data();

// That root; "" when it is not there.
std::string own_root();

inline constexpr int kSecondsOfPatience = 5;

// What this program prints when it is called with these words.
olh_viewers::Heard heard_from_own_child(std::vector<std::string> words);

// "does not answer within 5 seconds".
std::string no_answer_in_time();

}  // namespace olh

#endif
