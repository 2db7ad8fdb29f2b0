// olh-browser: takes the command lines that the library sends to a browser, and opens a browser of today.
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
    "The browser: OLH_BROWSER_PROGRAM, else the first of the list BROWSER, else the desktop's default, else\n"
    "x-www-browser, else the first along PATH of firefox-esr, firefox, chromium and its kin, epiphany, falkon,\n"
    "konqueror; in WSL the Windows side; else xdg-open or gio.\n"
    "\n"
    "Exit status: 0 shown (ping: it runs), 1 not shown, 2 no browser (ping: \"No running window\"), 64 wrong use.\n";

}  // namespace

int main(int argc, char** argv) {
  return olh_viewers::run_adapter(
      {"olh-browser", kHelp, olh_viewers::browser_request, olh_viewers::answer_as_browser}, argc, argv);
}
