// Doing what olh-browser was asked for.
//
// Knows    when a page goes to a browser and when it becomes text, and what is said when neither can be.
// Not      which browser (choice), how it is called (programs), how it is started (child).
// For      main.
#ifndef OLH_TOOLS_OLH_BROWSER_BROWSER_H
#define OLH_TOOLS_OLH_BROWSER_BROWSER_H

#include "request.h"
#include "trace.h"

namespace olh_viewers {

// Whether the chosen browser runs where it could show something: prints "No running window" and returns 2 when not.
int answer_ping(const Trace& trace);

// Shows the address, or only starts the browser. Returns an ExitStatus.
int open_in_browser(BrowserRequest request, const Trace& trace);

}  // namespace olh_viewers

#endif
