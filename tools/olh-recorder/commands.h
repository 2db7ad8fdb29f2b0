// The commands of olh-recorder: makes recording viewers, tells them how to answer, shows what they noted.
//
// Knows    the command line, and how a call is written for people (as shell words) and for programs (as JSON).
// Not      what a viewer does when it is called (viewer), how a record is stored (records).
// Owns     nothing.
// For      main.
#ifndef OLH_RECORDER_COMMANDS_H
#define OLH_RECORDER_COMMANDS_H

#include <string>
#include <vector>

namespace olh_recorder {

// Returns the exit status: 0 done, 1 not done, 64 the command line is wrong.
int run_command(const std::vector<std::string>& words);

}  // namespace olh_recorder

#endif
