// Showing a URL: in the running browser, else in one that is started for it.
#include <string>
#include <vector>

#include "bounded_text.h"
#include "browser.h"
#include "command.h"
#include "detached_start.h"
#include "olh/support.h"
#include "viewer_argument.h"

namespace {

// The start as a shell command, for the debug line only: no shell takes part in it.
std::string start_command(const std::vector<std::string>& words) {
  std::string command = words[0];
  for (std::size_t i = 1; i < words.size(); ++i) command += " '" + words[i] + "'";
  return command + " &";
}

const char* failure_text(olh::StartOutcome outcome) {
  switch (outcome) {
    case olh::StartOutcome::kForkFailed:
      return "pid == -1";
    case olh::StartOutcome::kWaitFailed:
      return "wait_pid == -1";
    default:
      return "WEXITSTATUS error";
  }
}

int failed(const char* why, int result) {
  print_debug("OlhBrowser::startBrowser: failed: %s\n", why);
  return result;
}

}  // namespace

// In this order:
//   1. no program is known                     7
//   2. a URL that no viewer may get            2
//   3. a browser runs and takes the URL        0
//   4. a browser starts with the URL           0
//   5. otherwise                               2
int OlhBrowser::openURL(const char* url, const char* viewer_path) {
  const char* const address = url == nullptr ? "" : url;
  print_debug("OlhBrowser::openURL: %s\n", address);
  std::string program(OLH_BUFFER_SIZE, '\0');
  const int known = getBrowserPath(program.data(), viewer_path);
  if (known == OLH_RESULT_NO_PROGRAM) {
    print_debug("OlhBrowser::openURL: failed: browser not found\n");
    return OLH_RESULT_NO_PROGRAM;
  }
  const bool allowed = known == OLH_RESULT_OK && olh::may_reach_a_viewer(address);
  if (allowed && ((isViewerRunning() == OLH_RESULT_OK && olh::open_in_running_browser(address, program.c_str())) ||
                  startBrowser(address, nullptr, program.c_str()) == OLH_RESULT_OK)) {
    print_debug("OlhBrowser::openURL: done\n");
    return OLH_RESULT_OK;
  }
  print_debug("OlhBrowser::openURL: failed\n");
  return OLH_RESULT_FAILED;
}

int OlhBrowser::startBrowser(const char* url, const char* arg, const char* browser) {
  print_debug("OlhBrowser::startBrowser\n");
  std::vector<std::string> words = {std::string(olh::text_of(browser)), std::string(olh::text_of(url))};
  if (arg != nullptr) words.emplace_back(arg);
  const std::string command = start_command(words);
  if (!olh::fits_a_command(command)) return failed("command too long", OLH_RESULT_FAILED);
  print_debug("OlhBrowser::startBrowser: cmd: %s\n", command.c_str());
  const olh::DetachedStart start = olh::start_detached(words);
  if (start.outcome == olh::StartOutcome::kStarted) {
    print_debug("OlhBrowser::startBrowser: done\n");
    return OLH_RESULT_OK;
  }
  return failed(failure_text(start.outcome),
                start.outcome == olh::StartOutcome::kFailed ? start.status : int{OLH_RESULT_FAILED});
}
