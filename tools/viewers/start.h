// Starts the viewer that was chosen, and tells how it fared.
//
// Knows    that a program which runs may be out of reach: then nothing is started, since what is asked for would be lost.
// Not      how a program is reached (running) or watched (child).
// For      both adapters.
#ifndef OLH_TOOLS_VIEWERS_START_H
#define OLH_TOOLS_VIEWERS_START_H

#include "choice.h"
#include "trace.h"

namespace olh_viewers {

// Watches it for so many milliseconds. Returns an exit status; what is not kExitShown has been said aloud.
int start_viewer(const Choice& choice, const Words& command, int milliseconds, const Trace& trace);

}  // namespace olh_viewers

#endif
