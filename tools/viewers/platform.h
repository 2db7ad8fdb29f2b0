// The kind of system this is, where that decides which browsers there are.
//
// For      choice, browser_reach and display.
#ifndef OLH_TOOLS_VIEWERS_PLATFORM_H
#define OLH_TOOLS_VIEWERS_PLATFORM_H

#include <string>

namespace olh_viewers {

// Whether this is Linux inside of Windows, and whether a program there belongs to Windows.
bool is_in_wsl();
bool is_of_windows(const std::string& program);

}  // namespace olh_viewers

#endif
