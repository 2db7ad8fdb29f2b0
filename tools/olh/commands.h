// The verbs of `olh`: what each adds to the command line.
//
// Knows    that a verb puts its subcommand into `app`, and its outcome into `exit_code` when it has run: a result code
//          of the library, kWrongUse, or what its --help says.
// For      main.cpp, whose table names every verb once.
#ifndef OLH_TOOLS_COMMANDS_H
#define OLH_TOOLS_COMMANDS_H

#include <CLI/CLI.hpp>

namespace olh {

inline constexpr int kWrongUse = 64;

CLI::App* add_show_command(CLI::App& app, int& exit_code);
CLI::App* add_search_command(CLI::App& app, int& exit_code);
CLI::App* add_portal_command(CLI::App& app, int& exit_code);
CLI::App* add_bookcase_command(CLI::App& app, int& exit_code);
CLI::App* add_list_command(CLI::App& app, int& exit_code);
CLI::App* add_topics_command(CLI::App& app, int& exit_code);
CLI::App* add_test_command(CLI::App& app, int& exit_code);
CLI::App* add_where_command(CLI::App& app, int& exit_code);
CLI::App* add_paths_command(CLI::App& app, int& exit_code);
CLI::App* add_alt_path_command(CLI::App& app, int& exit_code);
CLI::App* add_setup_command(CLI::App& app, int& exit_code);
CLI::App* add_viewers_command(CLI::App& app, int& exit_code);
CLI::App* add_doctor_command(CLI::App& app, int& exit_code);
CLI::App* add_dmerge_command(CLI::App& app, int& exit_code);
CLI::App* add_check_command(CLI::App& app, int& exit_code);
CLI::App* add_new_command(CLI::App& app, int& exit_code);
CLI::App* add_version_command(CLI::App& app, int& exit_code);

// Hidden: `olh` asks itself, in a process of its own, what one URL root holds (root_probe.h).
CLI::App* add_probe_root_command(CLI::App& app, int& exit_code);
// Hidden too: builds the search path, where that may never end (path_trial.h).
CLI::App* add_try_path_command(CLI::App& app, int& exit_code);

// The options that many verbs share.
inline void add_root_option(CLI::App& verb, std::string& root) {
  verb.add_option("--root", root, "Documentation roots to put in front, separated by ':'")->type_name("PATHS");
}
inline void add_json_option(CLI::App& verb, bool& json) { verb.add_flag("--json", json, "Answer as JSON"); }

}  // namespace olh

#endif
