// olh: the documentation at a terminal. Everything it does goes through the library's public functions.
#include <iniparser.h>

#include <CLI/CLI.hpp>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <exception>

#include "check.h"
#include "doctor.h"
#include "find.h"
#include "lists.h"
#include "shared.h"
#include "show.h"
#include "viewers.h"

namespace {

// Every verb, in the order in which the help lists them.
constexpr auto kVerbs = {
    olh::add_show_command,    olh::add_search_command,     olh::add_portal_command,   olh::add_bookcase_command,
    olh::add_list_command,    olh::add_topics_command,     olh::add_test_command,     olh::add_where_command,
    olh::add_paths_command,   olh::add_alt_path_command,   olh::add_setup_command,    olh::add_viewers_command,
    olh::add_doctor_command,  olh::add_dmerge_command,     olh::add_check_command,    olh::add_new_command,
    olh::add_version_command, olh::add_probe_root_command, olh::add_try_path_command,
};

constexpr const char* kExamples =
    "Examples:\n"
    "  olh show olh_manual quick_start\n"
    "  olh where --all olh_manual\n"
    "  olh VERB --help\n"
    "The exit code is the library's result code, 64 for wrong use;\n"
    "check, doctor and dmerge --check have their own.\n";

// What the INI reader, in the library, has against an option file; it quotes the file's lines.
int say_visibly(const char* format, ...) {
  char message[8192];
  va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(message, sizeof message, format, arguments);
  va_end(arguments);
  return std::fputs(olh_viewers::visible_page(olh::with_file_named(message)).c_str(), stderr);
}

int run(int argc, char** argv) {
  int exit_code = 0;
  CLI::App app("The documentation of this machine's programs, at a terminal.", "olh");
  app.require_subcommand(1);
  app.footer(kExamples);
  for (const auto add : kVerbs) add(olh::Verb(app, exit_code));
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : olh::kWrongUse;
  }
  if (std::fflush(stdout) == 0) return exit_code;
  olh::complain("the answer could not be written.");
  return OLH_RESULT_IO;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    iniparser_set_error_callback(say_visibly);
    const char* rehearsal = std::getenv(olh::kRehearsalVariable);
    return rehearsal != nullptr ? olh::answer_as_viewer(rehearsal, argc, argv) : run(argc, argv);
  } catch (const std::exception& error) {
    olh::complain(error.what());
    return OLH_RESULT_FAILED;
  }
}
