// A file's address, and the same page from the server of this user's pages.
//
// Knows    which folder is served for a page, and that a server is started when none lives.
// Not      whether a browser needs it (browser_reach).
// For      the adapters, and olh-serve.
#ifndef OLH_TOOLS_VIEWERS_SERVED_ADDRESS_H
#define OLH_TOOLS_VIEWERS_SERVED_ADDRESS_H

#include <string>

#include "serve_state.h"

namespace olh_viewers {

inline constexpr const char* kServer = "olh-serve";

// The served address of a file:// address, its query and fragment whole. "" when there is none, and then `said` is the
// reason.
std::string served_address(const std::string& url, std::string& said);

// The part behind the server's own address: the root's token, and the page with its query and fragment. The file of the
// address lies below the root.
std::string served_path(const ServedRoot& root, const std::string& url);

// The documentation root of a file, by the layout of roots; the file's folder when it lies in none.
std::string root_of_file(const std::string& file);

}  // namespace olh_viewers

#endif
