// The steps of a help request as `olh doctor` looks at them: one function each, which tells what it finds.
//
// Knows    what a diagnosis is.
// Not      how diagnoses are printed and counted (doctor_command).
// For      doctor_command, whose table names every check once, and the files doctor_*.
#ifndef OLH_TOOLS_DOCTOR_CHECKS_H
#define OLH_TOOLS_DOCTOR_CHECKS_H

#include <string>
#include <vector>

#include "find.h"

namespace olh {

// Right, works with a drawback, does not work, or cannot be told from here.
enum class State { kOk, kWarning, kProblem, kCannotTell };

struct Diagnosis {
  State state;
  std::string sentence;
  std::string cure{};  // the command that mends it, "" without one
};
using Diagnoses = std::vector<Diagnosis>;

// The words as a command that changes a place in the file system: with sudo where the user may not.
std::string command_on(const std::string& place, const std::vector<std::string>& words);

// What the checks look at.
struct Machine {
  SearchRoots roots;
  std::string document;  // as asked, "" for none
  std::string tag;
  bool attempt = false;  // whether something is shown to find out
};

// The roots that do not answer in a bearable time. For the checks that follow they are taken out of the variables that
// lead to them, and out of `host_roots`, which --root puts in front. It must come before anything that initialises the
// library.
Diagnoses check_answering_roots(std::string& host_roots);

Diagnoses check_variables(const Machine& machine);
Diagnoses check_trace_log(const Machine& machine);
Diagnoses check_option_files(const Machine& machine);
Diagnoses check_roots(const Machine& machine);
Diagnoses check_browser(const Machine& machine);
Diagnoses check_reader(const Machine& machine);
Diagnoses check_session(const Machine& machine);
Diagnoses check_tools(const Machine& machine);
Diagnoses check_lists_of_roots(const Machine& machine);
// Nothing where no document is asked for.
Diagnoses check_document(const Machine& machine);
// Shows the manual that comes with this program, where an attempt is asked for.
Diagnoses try_viewers(const Machine& machine);

}  // namespace olh

#endif
