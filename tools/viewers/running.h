// Whether a program of this user runs.
//
// Knows    how the system lists processes. Nothing is asked of the program itself, so nothing happens in it, and a lock
//          that a killed program left behind misleads nobody.
// For      olh-browser.
#ifndef OLH_TOOLS_VIEWERS_RUNNING_H
#define OLH_TOOLS_VIEWERS_RUNNING_H

#include <string_view>

namespace olh_viewers {

// A process of this user with that name that has not ended. Where the system has no /proc: false.
bool is_running(std::string_view process);

}  // namespace olh_viewers

#endif
