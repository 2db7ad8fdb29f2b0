// The server that the adapters start for themselves: in the background, found by every later call of this user.
//
// Knows    that it ends after an hour in which nobody asked for a page, and with the session; that a start lasts only until
//          it can be asked.
// Not      who looks for it (served_address), and where (serve_state).
// For      main.
#ifndef OLH_TOOLS_SERVE_BACKGROUND_H
#define OLH_TOOLS_SERVE_BACKGROUND_H

namespace olh_serve {

// Returns an exit code; the server goes on in a process of its own.
int serve_in_background();

}  // namespace olh_serve

#endif
