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

// The page with a script at its end that asks once a second whether its manual is still as it was.
std::string with_reload_script(std::string page, const std::string& root, const RequestedPath& path);

}  // namespace olh_serve

#endif
