// What one URL root holds.
//
// Knows    that a process whose search path is this root alone gets an answer about it alone: no public function asks
//          a server about one URL, and the roots of the environment cannot be taken out of a search path.
// For      `olh where --all`. A directory needs none of this.
#ifndef OLH_TOOLS_ROOT_PROBE_H
#define OLH_TOOLS_ROOT_PROBE_H

#include <map>
#include <string>
#include <vector>

namespace olh {

enum class Presence { kYes, kNo, kCannotTell };

// For each URL, all of them below `root`, whether it is there.
std::map<std::string, Presence> probe_url_root(const std::string& root, const std::vector<std::string>& urls);

}  // namespace olh

#endif
