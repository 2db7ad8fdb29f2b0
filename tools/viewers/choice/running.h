// Whether a program of this user runs.
//
// Knows    how the system lists processes, what the locks of browsers look like, and how the session bus names its members.
//          Nothing is asked of the program itself, so nothing happens in it, and a lock that a killed program left behind
//          misleads nobody.
// Not      which traces a program leaves (programs).
// For      olh-browser, and olh viewers.
#ifndef OLH_TOOLS_VIEWERS_RUNNING_H
#define OLH_TOOLS_VIEWERS_RUNNING_H

#include "programs.h"

namespace olh_viewers {

// Whether it runs, a browser so that it would take an address. Only this user's processes count; where the system has no /proc,
// none.
bool is_running(const Program& program);

// Why it, which runs, cannot be given a page: the end of a sentence, "" when it can. One that is starting is waited for. One that takes pages over the session
// bus listens on the bus it was started with, whichever the caller has: from here on that one is used.
std::string objection_to_hand_over(const Program& program);

// A variable that its process was started with; "" when it was not, when that cannot be told, or it does not run.
std::string variable_of_running(const Program& program, std::string_view name);

}  // namespace olh_viewers

#endif
