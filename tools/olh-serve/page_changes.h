// Pages that load themselves again when their manual changes.
//
// Knows    which files belong to the manual of a page, and how it is seen that one of them changes.
// Not      who asks (page_server).
// For      page_server, with --reload.
#ifndef OLH_TOOLS_SERVE_PAGE_CHANGES_H
#define OLH_TOOLS_SERVE_PAGE_CHANGES_H

#include <string>
#include <vector>

#include "request_path.h"

namespace olh_serve {

// A text that is another one after a file of that folder, or of one below it, has changed.
std::string state_of_folder(const std::string& root, const std::vector<std::string>& names);

// What asks once a second whether a manual is still as it was. Its own address says which: behind the "?" stands the state
// that the page was made from.
std::string reload_script();

// The page with that script at its end. It is a file of its own: a page may have a policy that lets no script stand in it.
std::string with_reload_script(std::string page, const std::string& root, const RequestedPath& path);

}  // namespace olh_serve

#endif
