// The search path built on trial, before this process builds its own and perhaps waits for ever.
//
// Knows    that the library gives a root all the time in the world, and that its debug lines tell which one it waits for.
// Not      what the lines mean (path_story).
// For      doctor and check.
#ifndef OLH_TOOLS_PATH_TRIAL_H
#define OLH_TOOLS_PATH_TRIAL_H

#include <optional>
#include <string>

#include "path_story.h"

namespace olh {

// The first root that does not answer in time when the search path is built with `host_roots` ("" for none) in front;
// nothing when all of them do.
std::optional<JudgedRoot> root_without_answer(const std::string& host_roots);

}  // namespace olh

#endif
