// The lists that the pages of a root read: whether they are true.
#include <exception>

#include "doctor_checks.h"
#include "lists.h"
#include "olh/dmerge.h"
#include "olh/support.h"
#include "shared.h"

namespace olh {

namespace {

bool has_lists(const std::string& root) {
  return path_exists((root + "/htmldocs/QEL/lib").c_str()) == 1 || path_exists((root + "/tomedecks").c_str()) == 1;
}

Diagnosis of_root(const std::string& root) {
  if (is_url(root.c_str()) == 1)
    return {State::kCannotTell, root + " is an address: run 'olh dmerge --check' where its files are."};
  if (!has_lists(root)) return {State::kOk, root + " has no portal and needs no lists."};
  const ListTrial check = try_lists(root);
  if (check.run.result != DMERGE_RESULT_OK)
    return {State::kWarning, "The lists of " + root + " cannot be made: " + check.failure};
  if (check.changes.empty()) return {State::kOk, "The lists of " + root + " are up to date."};
  std::vector<std::string> files;
  for (const ListChange& change : check.changes)
    files.push_back(change.is_unreadable ? change.file + " " + state_of(change) : change.file);
  return {State::kWarning,
          "The lists of " + root + " are out of date (" + enumeration(files) +
              "): the portal and the search miss what is new.",
          command_on(root, {"olh", "dmerge", root})};
}

}  // namespace

Diagnoses check_lists_of_roots(const Machine& machine) {
  Diagnoses diagnoses;
  for (const SearchRoot& root : machine.roots.roots) {
    try {
      diagnoses.push_back(of_root(root.path));
    } catch (const std::exception&) {
      diagnoses.push_back(
          {State::kCannotTell,
           "The lists of " + root.path +
               " cannot be checked: a directory of it cannot be read, or there is no room for a trial."});
    }
  }
  if (diagnoses.empty())
    diagnoses.push_back({State::kCannotTell, "Without a documentation root there are no lists."});
  return diagnoses;
}

}  // namespace olh
