// What a viewer program answers when it is asked: whether it runs, and what an adapter would open.
//
// Knows    that only the adapters may be asked; the others would open a window, or wait for one to be closed, so their
//          processes are looked for instead.
// Not      which program is in use (chosen_viewer).
// For      viewers, doctor and showing.
#ifndef OLH_TOOLS_VIEWER_ANSWERS_H
#define OLH_TOOLS_VIEWER_ANSWERS_H

#include <optional>
#include <string>

#include "viewer_kind.h"

namespace olh {

// What an adapter would run; `program` is "" when it has nothing to run or does not answer.
struct Driven {
  std::string program;
  std::string command;  // with URL where the address stands
  std::string source;   // who chose it
};
Driven driven_by(const ViewerKind& kind, const std::string& adapter);

// Whether the viewer runs that a program stands for; nothing when that cannot be told.
std::optional<bool> is_viewer_running(const ViewerKind& kind, const std::string& program);

// Whether a program would write text to the terminal: the adapter, where nothing has a display.
bool shows_text(const ViewerKind& kind, const std::string& program);

}  // namespace olh

#endif
