// What one URL root holds.
//
// Knows    that a process whose search path is this root alone gets an answer about it alone: no public function asks
//          a server about one URL, and the roots of the environment cannot be taken out of a search path.
// For      `olh where --all` and doctor. A directory needs none of this.
#ifndef OLH_TOOLS_ROOT_PROBE_H
#define OLH_TOOLS_ROOT_PROBE_H

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace olh {

enum class Presence { kYes, kNo, kCannotTell };

// For each URL, all of them below `root`, whether it is there; kCannotTell from the first on that is not answered in
// time.
std::map<std::string, Presence> probe_url_root(const std::string& root, const std::vector<std::string>& urls);

// How many milliseconds the root takes to answer one question; nothing when it could not be asked, or not in time.
std::optional<double> probe_time(const std::string& root);

}  // namespace olh

#endif
