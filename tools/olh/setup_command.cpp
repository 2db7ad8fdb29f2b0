// olh setup: olh-browser and olh-pdf-reader become the user's viewers.
#include <array>
#include <filesystem>
#include <memory>

#include "chosen_viewer.h"
#include "commands.h"
#include "environment.h"
#include "olh/support.h"
#include "option_file.h"
#include "output.h"
#include "search_roots.h"

namespace olh {

namespace {

constexpr const char* kNotes =
    "The programs are taken from the directory of olh itself, else along PATH. --undo forgets them\n"
    "again; what was chosen before does not come back.\n"
    "Examples:\n"
    "  olh setup\n"
    "  olh setup --undo\n"
    "Exit code: 0, 5 the option file cannot be written, 7 no such program, 64 wrong use.\n";

struct Adapter {
  OlhViewer viewer;
  const char* name;
  const char* key;
  const char* label;
};

constexpr std::array kAdapters = {Adapter{OLH_VIEWER_HTML, "olh-browser", "QEL_HTML_BROWSER", "browser"},
                                  Adapter{OLH_VIEWER_PDF, "olh-pdf-reader", "QEL_PDF_READER", "PDF reader"}};

std::string installed_program(const Adapter& adapter) {
  const std::filesystem::path beside = std::filesystem::path(own_program()).replace_filename(adapter.name);
  if (exe_exists(beside.c_str()) == 1) return beside.string();
  std::array<char, OLH_BUFFER_SIZE> found{};
  search_path(found.data(), adapter.name, nullptr);
  return found.data();
}

ChosenViewer in_use(const Adapter& adapter, const SearchRoots& roots) {
  if (roots.roots.empty()) return choose_viewer(adapter.viewer, "", "");
  const SearchRoot& first = roots.roots.front();
  return adapter.viewer == OLH_VIEWER_HTML ? choose_viewer(adapter.viewer, first.browser, first.browser_from)
                                           : choose_viewer(adapter.viewer, first.reader, first.reader_from);
}

// What stood in the user's file when that is not what was in use: a program that is gone.
std::string stale_choice(const Adapter& adapter, const ChosenViewer& before) {
  const std::string written = written_value(user_option_file(), adapter.key);
  if (written.empty() || before.choice == "option_file") return "";
  return "; the file named " + written + ", which is no executable";
}

int set(const Adapter& adapter, const SearchRoots& roots) {
  const std::string program = installed_program(adapter);
  if (program.empty()) {
    complain(std::string(adapter.name) + " is neither beside " + own_program() + " nor in a directory of PATH: the " +
             adapter.label + " stays as it is.");
    return OLH_RESULT_NO_PROGRAM;
  }
  const ChosenViewer before = in_use(adapter, roots);
  const std::string stale = stale_choice(adapter, before);
  const int result = OlhSetViewerPath(adapter.viewer, program.c_str());
  if (result != OLH_RESULT_OK) {
    complain("the " + std::string(adapter.label) + " " + program + " could not be written to " + user_option_file() +
             ".");
  } else if (before.program == program) {
    say("The " + std::string(adapter.label) + " is " + describe(before) + " already; nothing is written.");
  } else {
    say("The " + std::string(adapter.label) + " is now " + program + ", written to " + user_option_file() +
        " (before: " + describe(before) + stale + ").");
  }
  return result;
}

int forget(const Adapter& adapter) {
  const std::string file = user_option_file();
  const std::string written = written_value(file, adapter.key);
  const std::string label = adapter.label;
  if (written.empty()) {
    say("No " + label + " is chosen in " + file + "; nothing is written.");
    return OLH_RESULT_OK;
  }
  if (std::filesystem::path(written).filename() != adapter.name) {
    say("The " + label + " in " + file + " is " + written + ", which 'olh setup' did not choose; it stays.");
    return OLH_RESULT_OK;
  }
  const int result = OlhSetViewerPath(adapter.viewer, "");
  if (result == OLH_RESULT_OK) {
    say("The " + label + " " + written + " is forgotten, in " + file + ".");
  } else {
    complain("the " + label + " " + written + " could not be taken out of " + file + ".");
  }
  return result;
}

int setup(bool undo) {
  const SearchRoots roots = find_search_roots("");
  const std::vector<SpoiltFile> spoilt = read_option_file(user_option_file()).spoilt;
  if (!spoilt.empty()) {  // a choice written there could not be read back
    complain_about(spoilt);
    complain("nothing is changed.");
    return OLH_RESULT_IO;
  }
  int worst = OLH_RESULT_OK;
  for (const Adapter& adapter : kAdapters) {
    const int result = undo ? forget(adapter) : set(adapter, roots);
    if (worst == OLH_RESULT_OK) worst = result;
  }
  return worst;
}

}  // namespace

CLI::App* add_setup_command(CLI::App& app, int& exit_code) {
  CLI::App* verb = app.add_subcommand("setup", "Make olh-browser and olh-pdf-reader your viewers");
  const auto undo = std::make_shared<bool>(false);
  verb->add_flag("--undo", *undo, "Forget them again");
  verb->footer(kNotes);
  verb->callback([undo, &exit_code] { exit_code = setup(*undo); });
  return verb;
}

}  // namespace olh
