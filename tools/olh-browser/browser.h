// What olh-browser is asked for, and how it does that.
//
// Knows    the library's three command lines for a browser; when a page goes to a browser and when it becomes text, and
//          what is said when neither can be.
// Not      which browser (choice), how it is called (programs), how it is started (adapter).
// For      main.
#ifndef OLH_TOOLS_OLH_BROWSER_BROWSER_H
#define OLH_TOOLS_OLH_BROWSER_BROWSER_H

#include "adapter.h"

namespace olh_viewers {

Request browser_request(const Words& words);

// Returns an ExitStatus. Of a ping: whether the chosen browser runs where it could show something; when not, "No running
// window" is printed, and the status is 2.
int answer_as_browser(const Request& request, const Trace& trace);

}  // namespace olh_viewers

#endif
