// What a running browser is asked and told through its -remote command line.
//
//   PROGRAM -remote 'ping()' 2>&1               is there one?
//   PROGRAM -remote 'openURL(URL,new-tab)'      show this
#include <string>
#include <string_view>

#include "bounded_text.h"
#include "browser.h"
#include "command.h"
#include "olh/support.h"
#include "shell_quote.h"

namespace {

bool says_not_running(std::string_view line) {
  return line.find("No running window") != std::string_view::npos ||
         line.find("not running") != std::string_view::npos;
}

}  // namespace

int OlhBrowser::isViewerRunning() {
  print_debug("OlhBrowser::isViewerRunning\n");
  // The program that the documentation prescribes plays no part here. Without a program nothing can run.
  char* const browser = d_viewerPaths == nullptr                 ? nullptr
                        : d_viewerPaths->overridePath != nullptr ? d_viewerPaths->overridePath
                                                                 : d_viewerPaths->defaultPath;
  if (browser != nullptr && mozRemotePing(browser) == OLH_RESULT_OK) {
    print_debug("OlhBrowser::isViewerRunning: done: viewer is running\n");
    return OLH_RESULT_OK;
  }
  print_debug("OlhBrowser::isViewerRunning: done: viewer is not running\n");
  return OLH_RESULT_FAILED;
}

// A browser that says nothing runs, and so does one that cannot be asked: openURL then tries the remote command, and
// starts a browser when that fails.
int OlhBrowser::mozRemotePing(char* browser) {
  print_debug("OlhBrowser::mozRemotePing\n");
  const std::string command = olh::shell_bare(olh::text_of(browser)) + " -remote 'ping()' 2>&1";
  bool running = !olh::is_empty(browser) && olh::fits(browser) && olh::fits_a_command(command);
  if (running) {
    olh::read_command(
        command,
        [&running](std::string_view line) {
          print_debug("OlhBrowser::mozRemotePing: buf: %.*s\n", static_cast<int>(line.size()), line.data());
          running = running && !says_not_running(line);
        },
        [&command] { print_debug("OlhBrowser::mozRemotePing: cmd: %s\n", command.c_str()); });
  }
  print_debug("OlhBrowser::mozRemotePing: browser is %s\n", running ? "running" : "not running");
  return running ? OLH_RESULT_OK : OLH_RESULT_FAILED;
}

// In a host that ignores SIGCHLD the status of a command cannot be known. It then counts as failed, so that a browser is
// started: the page may be shown twice, but never not at all.
bool olh::open_in_running_browser(const char* url, const char* browser) {
  const std::string command = shell_bare(browser) + " -remote 'openURL(" + shell_in_single_quotes(url) + ",new-tab)'";
  return fits_a_command(command) && run_command(command) == 0;
}
