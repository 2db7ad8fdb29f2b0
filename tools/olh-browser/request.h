// What olh-browser was asked for.
//
// Knows    the library's three command lines for a browser, and the adapter's own options.
// Not      how it is done (browser).
// For      main.
#ifndef OLH_TOOLS_OLH_BROWSER_REQUEST_H
#define OLH_TOOLS_OLH_BROWSER_REQUEST_H

#include "words.h"

namespace olh_viewers {

struct BrowserRequest {
  enum class Kind {
    kWrong,    // nothing of what follows
    kHelp,     // --help
    kVersion,  // --version
    kPing,     // -remote ping(): does the browser run?
    kRemote,   // -remote openURL(URL,new-tab): a new tab in the one that runs
    kOpen,     // URL
    kStart     // no address: only the browser
  };
  Kind kind = Kind::kWrong;
  std::string url;
  bool as_text = false;  // --text
  bool dry_run = false;  // --dry-run
};

BrowserRequest parse_browser_request(Words arguments);

}  // namespace olh_viewers

#endif
