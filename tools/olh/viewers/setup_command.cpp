// olh setup: olh-browser and olh-pdf-reader become the user's viewers.
#include <filesystem>

#include "find.h"
#include "shared.h"
#include "viewer_storing.h"
#include "viewers.h"

namespace olh {

namespace {

constexpr const char* kNotes =
    "The programs are taken from the directory of olh itself, else along PATH. --undo forgets them\n"
    "again; what was chosen before does not come back.\n"
    "Examples:\n"
    "  olh setup\n"
    "  olh setup --undo\n"
    "Exit code: 0, 5 the option file cannot be written, 7 no such program, 64 wrong use.\n";

int set(const ViewerKind& kind, const SearchRoots& roots) {
  const std::string program = installed_adapter(kind);
  if (!program.empty()) return store_for_user(kind, program, roots);
  return failure(OLH_RESULT_NO_PROGRAM, std::string(kind.adapter) + " is neither beside " + own_program() +
                                            " nor in a directory of PATH: the " + kind.label + " stays as it is.");
}

int forget(const ViewerKind& kind, const SearchRoots& roots) {
  const std::string file = user_option_file();
  const std::string written = written_value(file, kind.key);
  if (!written.empty() && std::filesystem::path(written).filename() != kind.adapter) {
    say("The " + std::string(kind.label) + " in " + file + " is " + written +
        ", which 'olh setup' did not choose; it stays.");
    return OLH_RESULT_OK;
  }
  return forget_choice(kind, false, roots);
}

int setup(const bool& undo) {
  const SearchRoots roots = find_search_roots("");
  if (refuse_change(user_file_faults())) return OLH_RESULT_IO;
  int worst = OLH_RESULT_OK;
  for (const ViewerKind& kind : kViewerKinds) {
    const int result = undo ? forget(kind, roots) : set(kind, roots);
    if (worst == OLH_RESULT_OK) worst = result;
  }
  return worst;
}

}  // namespace

void add_setup_command(const Verb& olh) {
  const Verb verb = olh.verb("setup", "Make olh-browser and olh-pdf-reader your viewers", kNotes);
  verb.flag("--undo", verb.action(setup), "Forget them again");
}

}  // namespace olh
