// Browsers that are Flatpaks: which application a command starts, and what its permissions are.
//
// Knows    the words of "flatpak run", and the files in which Flatpak keeps an application's permissions and what the
//          user or the administrator has changed of them.
// Not      what follows from it for a page (browser_reach).
// For      browser_reach.
#ifndef OLH_TOOLS_VIEWERS_FLATPAK_H
#define OLH_TOOLS_VIEWERS_FLATPAK_H

#include "words.h"

namespace olh_viewers {

// The application that "run" in these words starts, such as "org.mozilla.firefox"; "" without one.
std::string flatpak_application(const Words& words);

// False when its permissions keep the application from the network; true also when they are not found.
bool may_use_network(const std::string& application);

}  // namespace olh_viewers

#endif
