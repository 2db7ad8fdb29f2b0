#include "viewer_answers.h"

#include "browser_reach.h"
#include "child.h"
#include "desktop_default.h"
#include "display.h"
#include "olh/support.h"
#include "running.h"
#include "shared.h"

namespace olh {

namespace {

constexpr const char* kAddress = "http://localhost/";

std::optional<bool> is_process_running(const std::string& program) {
  const olh_viewers::Program* row = program.empty() ? nullptr : known_program(program);
  if (row == nullptr) return std::nullopt;
  const olh_viewers::Traces& traces = row->traces;
  if (traces.process.empty() && traces.bus_name.empty() && traces.locks.empty()) return std::nullopt;
  return olh_viewers::is_running(*row);
}

}  // namespace

bool shows_text(const ViewerKind& kind, const std::string& program) {
  return is_adapter(kind, program) && !olh_viewers::has_display() &&
         !olh_viewers::shows_elsewhere(olh_viewers::choose_browser());
}

// An adapter prints one line: COMMAND, four blanks, and who chose it in brackets.
Driven driven_by(const ViewerKind& kind, const std::string& adapter) {
  const VariableForNow no_trace("OLH_LOG_HELP", "");
  olh_viewers::Words words = {executable_named(adapter), "--dry-run"};
  if (kind.viewer == OLH_VIEWER_HTML) words.emplace_back(kAddress);
  const std::string line = olh_viewers::output_of(words).value_or("");
  const std::size_t bracket = line.rfind("    (");
  if (bracket == std::string::npos || !line.ends_with(")\n")) return {};
  Driven driven;
  driven.command = line.substr(0, bracket);
  driven.source = line.substr(bracket + 5, line.size() - bracket - 7);
  if (const std::size_t address = driven.command.find(kAddress); address != std::string::npos)
    driven.command.replace(address, std::string(kAddress).size(), "URL");
  if (const olh_viewers::Words command = olh_viewers::pieces_of(driven.command, ' '); !command.empty())
    driven.program = command[olh_viewers::place_of_program(command)];
  return driven;
}

std::optional<bool> is_viewer_running(const ViewerKind& kind, const std::string& program) {
  if (!is_adapter(kind, program)) return is_process_running(program);
  if (kind.viewer == OLH_VIEWER_PDF) return is_process_running(driven_by(kind, program).program);
  return OlhIsViewerRunning(kind.viewer) == OLH_RESULT_OK;
}

}  // namespace olh
