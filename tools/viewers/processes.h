// The processes of this user.
//
// Knows    how the system shows them below /proc. A process that has ended and was not collected yet is none.
// For      running.
#ifndef OLH_TOOLS_VIEWERS_PROCESSES_H
#define OLH_TOOLS_VIEWERS_PROCESSES_H

#include <string>
#include <string_view>

namespace olh_viewers {

// Whether a process of that number runs and its name begins so.
bool is_process(int process, std::string_view name_begin);

// The number of a process with exactly that name; 0 when there is none, and for "".
int process_named(std::string_view name);

// A variable that the process was started with; "" when it was not, or when that cannot be read.
std::string variable_of_process(int process, std::string_view name);

}  // namespace olh_viewers

#endif
