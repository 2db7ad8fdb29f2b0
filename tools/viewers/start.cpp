#include "start.h"

#include "child.h"
#include "running.h"

namespace olh_viewers {

int start_viewer(const Choice& choice, const Words& command, int milliseconds, const Trace& trace) {
  const std::string out_of_reach = choice.row == nullptr ? "" : objection_to_hand_over(*choice.row);
  if (!out_of_reach.empty()) {
    trace.complain(choice.program + " runs already and cannot be given the page: " + out_of_reach +
                   ". Close it, and ask again.");
    return kExitFailed;
  }
  trace.note(shown(command) + " (" + choice.source + ")");
  std::string said;
  const int status = start_and_watch(command, milliseconds, said);
  if (status != kExitShown) trace.complain(choice.program + " " + said + ".");
  return status;
}

}  // namespace olh_viewers
