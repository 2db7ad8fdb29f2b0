// The library's debug lines during one piece of work, instead of on the user's screen.
//
// Knows    that the lines go to standard error while OLH_DEBUG is set, and that setDebugVariable reads it again.
// Not      what a line means (search_path, option_file).
// Owns     descriptor 2 and OLH_DEBUG while the work runs; both are as before afterwards.
// For      whoever needs to know more than a public function answers. No viewer may be started inside: it would
//          inherit both.
#ifndef OLH_TOOLS_DEBUG_CAPTURE_H
#define OLH_TOOLS_DEBUG_CAPTURE_H

#include <functional>
#include <string>
#include <vector>

namespace olh {

// Runs the work and returns every line that it wrote to standard error, the INI reader's own messages among them.
// A user who has set OLH_DEBUG gets to see them too. Throws std::system_error when they cannot be kept.
std::vector<std::string> debug_lines_of(const std::function<void()>& work);

}  // namespace olh

#endif
