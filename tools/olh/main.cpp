// olh: the documentation at a terminal. Everything it does goes through the library's public functions.
#include <iniparser.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>

#include "check.h"
#include "doctor.h"
#include "files.h"
#include "find.h"
#include "lists.h"
#include "shared.h"
#include "show.h"
#include "viewers.h"

namespace {

// Every verb, in the order in which the help lists them.
constexpr std::initializer_list<void (*)(const olh::Verb&)> kVerbs = {
    olh::add_show_command,         olh::add_search_command,   olh::add_portal_command,
    olh::add_bookcase_command,     olh::add_list_command,     olh::add_topics_command,
    olh::add_test_command,         olh::add_where_command,    olh::add_paths_command,
    olh::add_alt_path_command,     olh::add_setup_command,    olh::add_viewers_command,
    olh::add_doctor_command,       olh::add_dmerge_command,   olh::add_check_command,
    olh::add_new_command,          olh::add_remove_command,   olh::add_version_command,
    olh::add_probe_root_command,   olh::add_try_path_command, olh::add_kept_results_command,
    olh::add_prepare_root_command,
};

// Verbs that are programs of their own, as the help lists them where they are installed. Any other program "olh-VERB" is
// found as well.
struct Program {
  const char* verb;
  const char* what;
};
constexpr Program kPrograms[] = {{"import", "Import a manual from another program"},
                                 {"index", "Make the search index of a documentation root"},
                                 {"serve", "Serve documentation to the browsers of this machine"}};

constexpr const char* kExamples =
    "Examples:\n"
    "  olh show olh_manual quick_start\n"
    "  olh where --all olh_manual\n"
    "  olh show --help\n"
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

// The program of a verb: beside this one, else along PATH; "" without one.
std::string program_of(const std::string& verb) {
  const bool is_name = !verb.starts_with('-') && verb.find('/') == std::string::npos;
  return is_name ? olh_viewers::find_beside("olh-" + verb) : "";
}

// Goes on as that program.
int become(const std::string& program, char** arguments) {
  execv(program.c_str(), arguments);
  return olh::failure(OLH_RESULT_FAILED, program + " does not start: " + std::strerror(errno));
}

int run(int argc, char** argv) {
  olh::CommandLine words("olh", "The documentation of this machine's programs, at a terminal.", kExamples,
                         olh::version_line);
  words.program().take_one_verb();
  for (const auto add : kVerbs) add(words.program());
  if (argc > 1 && !words.has_verb(argv[1]))
    if (const std::string program = program_of(argv[1]); !program.empty()) return become(program, argv + 1);
  for (const auto& [verb, what] : kPrograms)
    if (!program_of(verb).empty()) words.add_program(verb, what);
  return words.run(argc, argv);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    iniparser_set_error_callback(say_visibly);
    const char* rehearsal = std::getenv(olh::kRehearsalVariable);
    return rehearsal != nullptr ? olh::answer_as_viewer(rehearsal, argc, argv) : run(argc, argv);
  } catch (const std::exception& error) {
    return olh::failure(OLH_RESULT_FAILED, error.what());
  }
}
