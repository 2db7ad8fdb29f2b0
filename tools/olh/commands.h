// The verbs of `olh`: what each adds to the command line.
//
// Knows    what the outcome of a verb is: a result code of the library, kWrongUse, or what its --help says.
// Not      how a verb declares its options (verb).
// For      main.cpp, whose table names every verb once.
#ifndef OLH_TOOLS_COMMANDS_H
#define OLH_TOOLS_COMMANDS_H

#include <string>

#include "verb.h"

namespace olh {

inline constexpr int kWrongUse = 64;

void add_show_command(const Verb& olh);
void add_search_command(const Verb& olh);
void add_portal_command(const Verb& olh);
void add_bookcase_command(const Verb& olh);
void add_list_command(const Verb& olh);
void add_topics_command(const Verb& olh);
void add_test_command(const Verb& olh);
void add_where_command(const Verb& olh);
void add_paths_command(const Verb& olh);
void add_alt_path_command(const Verb& olh);
void add_setup_command(const Verb& olh);
void add_viewers_command(const Verb& olh);
void add_doctor_command(const Verb& olh);
void add_dmerge_command(const Verb& olh);
void add_check_command(const Verb& olh);
void add_new_command(const Verb& olh);
void add_version_command(const Verb& olh);

// Hidden: `olh` asks itself, in a process of its own, what one URL root holds (root_probe.h).
void add_probe_root_command(const Verb& olh);
// Hidden too: builds the search path, where that may never end (path_trial.h).
void add_try_path_command(const Verb& olh);

// The options that many verbs share.
inline void add_root_option(const Verb& verb, std::string& root) {
  verb.option("--root", root, "Documentation roots to put in front, separated by ':'").value_named("PATHS");
}
inline void add_json_option(const Verb& verb, bool& json) { verb.flag("--json", json, "Answer as JSON"); }

}  // namespace olh

#endif
