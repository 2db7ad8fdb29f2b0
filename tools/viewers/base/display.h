// Whether there is a display to show something on.
//
// Knows    the two variables, and that a display of this machine that nobody serves is none: some viewers notice that
//          only after seconds.
// For      both adapters.
#ifndef OLH_TOOLS_VIEWERS_DISPLAY_H
#define OLH_TOOLS_VIEWERS_DISPLAY_H

#include <string_view>

namespace olh_viewers {

bool has_display();

// Whether two values of DISPLAY, or of WAYLAND_DISPLAY, mean the same one, whichever screen of it.
bool is_same_display(std::string_view one, std::string_view other);

}  // namespace olh_viewers

#endif
