#include "adapter.h"

#include <cstdio>
#include <exception>

#include "child.h"
#include "running.h"

namespace olh_viewers {

namespace {

int print(const std::string& text) { return std::fputs(text.c_str(), stdout) < 0 ? kExitFailed : kExitShown; }

int run(const Adapter& adapter, const Words& arguments) {
  bool as_text = false;
  bool dry_run = false;
  auto word = arguments.begin();
  for (; word != arguments.end() && word->starts_with("--"); ++word) {
    if (*word == "--help") return print(adapter.help);
    if (*word == "--version") return print(adapter.name + " " OLH_PACKAGE_VERSION "\n");
    if (*word != "--text" && *word != "--dry-run") break;
    as_text = as_text || *word == "--text";
    dry_run = dry_run || *word == "--dry-run";
  }
  const bool is_unknown = word != arguments.end() && word->starts_with("--");
  Request request = is_unknown ? Request() : adapter.request_in({word, arguments.end()});
  request.as_text = as_text;
  request.dry_run = dry_run;
  const Trace trace(adapter.name, arguments);
  if (request.kind != Request::Kind::kWrong && !(as_text && request.kind == Request::Kind::kStart))
    return trace.result(adapter.answer(request, trace));
  trace.complain("this command line is none of mine; see " + adapter.name + " --help.");
  return trace.result(kExitWrongUse);
}

}  // namespace

int run_adapter(const Adapter& adapter, int argc, char** argv) {
  try {
    return run(adapter, Words(argv + (argc > 0 ? 1 : 0), argv + argc));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s: %s\n", adapter.name.c_str(), error.what());
    return kExitFailed;
  }
}

int print_command(const Words& command, const std::string& source) {
  return print(command_line(command) + "    (" + source + ")\n");
}

int start_viewer(const Choice& choice, const Words& command, int milliseconds, const Trace& trace) {
  const std::string out_of_reach = choice.row == nullptr ? "" : objection_to_hand_over(*choice.row);
  if (!out_of_reach.empty()) {
    trace.complain(choice.program + " runs already and cannot be given the page: " + out_of_reach +
                   ". Close it, and ask again.");
    return kExitFailed;
  }
  trace.note(command_line(command) + " (" + choice.source + ")");
  std::string said;
  const bool any_status = choice.row != nullptr && choice.row->has_idle_status;
  const int status = start_and_watch(command, milliseconds, said, any_status);
  if (status != kExitShown) trace.complain(choice.program + " " + said + ".");
  return status;
}

}  // namespace olh_viewers
