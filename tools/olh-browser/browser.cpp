#include "browser.h"

#include <cstdio>

#include "choice.h"
#include "display.h"
#include "file_address.h"
#include "files.h"
#include "running.h"
#include "start.h"
#include "text_view.h"
#include "url.h"

namespace olh_viewers {

namespace {

// A launcher looks two seconds after a start: by then it must see how the browser fared. A browser that runs takes a page
// within a tenth of a second, and may take longer on a busy machine.
constexpr int kWatchStart = 1500;
constexpr int kWatchHandOver = 2000;

constexpr int kNotRunning = 2;

bool is_outside_home(const std::string& file) {
  const std::string home = variable("HOME");
  return home.empty() || !file.starts_with(home + "/");
}

void warn(const Choice& choice, const std::string& url, const Trace& trace) {
  if (choice.is_sandboxed && is_file_url(url) && is_outside_home(file_of(url)))
    trace.complain("note: " + choice.program + " runs in a sandbox and may not see " + file_of(url) +
                   ". A documentation root behind http:// is the way out.");
  if (choice.row == nullptr) return;
  const std::string display = display_of_running(*choice.row);
  const std::string own = variable("DISPLAY");
  if (!display.empty() && !own.empty() && !is_same_display(display, own))
    trace.complain("note: " + choice.program + " runs on the display " + display + ", where the page will open.");
}

int dry_run(const Words& command, const std::string& source) {
  std::printf("%s    (%s)\n", shown(command).c_str(), source.c_str());
  return kExitShown;
}

}  // namespace

int answer_ping(const Trace& trace) {
  const Choice choice = has_display() ? choose_browser() : Choice();
  if (choice && choice.row != nullptr && is_running(*choice.row)) {
    trace.note(choice.program + " runs");
    return kExitShown;
  }
  std::puts("No running window");
  return kNotRunning;
}

int open_in_browser(BrowserRequest request, const Trace& trace) {
  const bool has_url = !request.url.empty();
  const std::string objection = has_url ? objection_to(request.url) : "";
  if (!objection.empty()) {
    trace.complain("the address is not opened: it " + objection + ".");
    return kExitWrongUse;
  }
  request.url = mended_address(request.url);
  const bool shows_text = request.as_text || !has_display();
  if (shows_text && has_url && !request.dry_run)
    return show_page_as_text(request.url, request.as_text ? WhyText::kAsked : WhyText::kNoDisplay, trace);
  if (shows_text && has_url) return dry_run({"w3m", "-dump", request.url}, "text");
  if (shows_text) {
    trace.complain("there is no display to start a browser on.");
    return kExitFailed;
  }
  const Choice choice = choose_browser();
  if (!choice) {
    trace.complain(std::string("there is no browser. Install one, or name one in ") + kBrowserVariable + ".");
    return kExitNoProgram;
  }
  const Words command =
      has_url ? open_command(choice, {request.url, file_of(request.url), "", 0}) : start_command(choice);
  if (request.dry_run) return dry_run(command, choice.source);
  warn(choice, request.url, trace);
  const bool is_remote = request.kind == BrowserRequest::Kind::kRemote;
  return start_viewer(choice, command, is_remote ? kWatchHandOver : kWatchStart, trace);
}

}  // namespace olh_viewers
