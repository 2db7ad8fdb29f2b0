// What a root answers that may never answer: this program once more, in a process of its own, is asked instead.
//
// Knows    that the library gives a root all the time in the world, and tells in its debug lines which one it waits for;
//          that a process whose search path is one URL root gets answers about that one alone: no public function asks a
//          server about one URL, and the roots of the environment cannot be taken out of a search path.
// Not      what the debug lines mean (path_story).
// For      where, doctor and check.
#ifndef OLH_TOOLS_ROOT_PROBE_H
#define OLH_TOOLS_ROOT_PROBE_H

#include <map>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <vector>

#include "path_story.h"

namespace olh {

enum class Presence { kYes, kNo, kCannotTell };

// True, false or null.
nlohmann::json presence_as_json(Presence presence);

// For each URL, all of them below `root`, whether it is there; kCannotTell from the first on that is not answered in
// time.
std::map<std::string, Presence> probe_url_root(const std::string& root, const std::vector<std::string>& urls);

// How many milliseconds the root takes to answer one question; nothing when it could not be asked, or not in time.
std::optional<double> probe_time(const std::string& root);

// The first root that does not answer in time when the search path is built with `host_roots` ("" for none) in front;
// nothing when all of them do.
std::optional<JudgedRoot> root_without_answer(const std::string& host_roots);

}  // namespace olh

#endif
