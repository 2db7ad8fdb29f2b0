// Whether there is a display to show something on.
//
// Knows    the two variables, and that a display of this machine that nobody serves is none: some viewers notice that
//          only after seconds.
// For      both adapters.
#ifndef OLH_TOOLS_VIEWERS_DISPLAY_H
#define OLH_TOOLS_VIEWERS_DISPLAY_H

namespace olh_viewers {

bool has_display();

}  // namespace olh_viewers

#endif
