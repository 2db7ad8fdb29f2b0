// olh-browser: takes the command lines that the library sends to a browser, and opens a browser of today.
#include <cstdio>
#include <exception>

#include "browser.h"

namespace {

constexpr const char* kHelp =
    "usage: olh-browser [--text] [--dry-run] [URL]\n"
    "       olh-browser -remote 'ping()'\n"
    "       olh-browser -remote 'openURL(URL,new-tab)'\n"
    "\n"
    "Opens an address (http, https or file) in the browser: in a new tab when it runs, else in a new one. Without a\n"
    "display, or with --text, shows the text of the page on the terminal; of a manual's topic, the topic's own "
    "page.\n"
    "--dry-run prints the command that would run, and who chose it.\n"
    "\n"
    "The browser: OLH_BROWSER_PROGRAM, else the desktop's default, else x-www-browser, else the first along PATH of\n"
    "firefox-esr, firefox, chromium and its kin, epiphany, falkon, konqueror.\n"
    "\n"
    "Exit status: 0 shown (ping: it runs), 1 not shown, 2 no browser (ping: \"No running window\"), 64 wrong use.\n";

int run(const olh_viewers::Words& arguments) {
  using olh_viewers::BrowserRequest;
  const BrowserRequest request = olh_viewers::parse_browser_request(arguments);
  if (request.kind == BrowserRequest::Kind::kHelp) return std::fputs(kHelp, stdout) < 0 ? 1 : 0;
  if (request.kind == BrowserRequest::Kind::kVersion)
    return std::puts("olh-browser " OLH_PACKAGE_VERSION) < 0 ? 1 : 0;
  const olh_viewers::Trace trace("olh-browser", arguments);
  if (request.kind == BrowserRequest::Kind::kWrong) {
    trace.complain("this command line is none of mine; see olh-browser --help.");
    return trace.result(olh_viewers::kExitWrongUse);
  }
  if (request.kind == BrowserRequest::Kind::kPing) return trace.result(olh_viewers::answer_ping(trace));
  return trace.result(olh_viewers::open_in_browser(request, trace));
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return run(olh_viewers::Words(argv + (argc > 0 ? 1 : 0), argv + argc));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "olh-browser: %s\n", error.what());
    return olh_viewers::kExitFailed;
  }
}
