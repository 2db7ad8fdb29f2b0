// What viewers need around them: a display, a session bus, and the programs that read PDFs and pages as text.
#include <array>

#include "browser_reach.h"
#include "choice.h"
#include "display.h"
#include "doctor_checks.h"
#include "shared.h"
#include "viewer_environment.h"
#include "viewers.h"

namespace olh {

namespace {

Diagnosis of_display() {
  if (olh_viewers::has_display()) return {State::kOk, "The display answers."};
  if (const olh_viewers::Choice browser = olh_viewers::choose_browser(); olh_viewers::shows_elsewhere(browser))
    return {State::kOk, "No display is needed: " + browser.program + " shows pages elsewhere."};
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY"})
    if (const std::string value = variable(name); !value.empty())
      return {State::kWarning, std::string(name) + " is " + value +
                                   ", and nothing answers there: the adapters show text, " + "other viewers fail."};
  return {State::kWarning, "There is no display: the adapters show text on the terminal, other viewers fail."};
}

Diagnosis of_session_bus() {
  if (olh_viewers::has_session_bus()) return {State::kOk, "There is a session bus."};
  const olh_viewers::Choice browser = olh_viewers::choose_browser();
  if (!browser) return {State::kOk, "There is no session bus, and no browser that could need one."};
  if (browser.row == nullptr && !olh_viewers::shows_elsewhere(browser))
    return {State::kCannotTell,
            "There is no session bus, and whether " + browser.program + " needs one is not known."};
  if (browser.row == nullptr || !browser.row->needs_session_bus)
    return {State::kOk, "There is no session bus, and " + browser.program + " needs none."};
  return {State::kWarning,
          "There is no session bus: when " + browser.program + " was started like this, it can take no second page.",
          "eval \"$(dbus-launch --sh-syntax)\""};
}

struct Tool {
  const char* program;
  const char* package;
  const char* without;  // what does not work without it, or who needs it
};

constexpr std::array kTools = {
    Tool{"pdfinfo", "poppler-utils", "whether a PDF has a destination, and on which page, cannot be checked"},
    Tool{"pdftotext", "poppler-utils", "a PDF cannot be shown where there is no display"},
    Tool{"w3m", "w3m", "a page cannot be shown where there is no display"}};

// Only those who write manuals miss them.
constexpr std::array kToolsOfWriters = {
    Tool{"python3", "python3", "the tools that make the search text and the PDF of a manual"},
    Tool{"chromium", "chromium", "the tools that print a manual as a PDF"}};

}  // namespace

Diagnoses check_session(const Machine&) { return {of_display(), of_session_bus()}; }

Diagnoses check_tools(const Machine&) {
  Diagnoses diagnoses;
  for (const Tool& tool : kTools) {
    const std::string program = executable_named(tool.program);
    if (!program.empty()) {
      diagnoses.push_back({State::kOk, program});
    } else {
      diagnoses.push_back({State::kWarning, std::string(tool.program) + " is not installed: " + tool.without + ".",
                           std::string("apt-get install ") + tool.package});
    }
  }
  for (const Tool& tool : kToolsOfWriters)
    if (executable_named(tool.program).empty())
      diagnoses.push_back({State::kOk, std::string(tool.program) + " is not installed; " + tool.without +
                                           " need it (package " + tool.package + ")."});
  return diagnoses;
}

}  // namespace olh
