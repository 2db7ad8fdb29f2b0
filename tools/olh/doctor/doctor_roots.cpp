// The documentation roots: whether there are any, what was rejected, how long those behind URLs take to answer.
#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "doctor_checks.h"
#include "files.h"
#include "find.h"
#include "olh/support.h"
#include "shared.h"

namespace olh {

namespace {

constexpr double kSlow = 1000;  // milliseconds
constexpr const char* kLimit = "export OLH_PROBE_TIMEOUT=2";

std::string milliseconds(double time) {
  char text[32];
  std::snprintf(text, sizeof text, time < 10 ? "%.1f ms" : "%.0f ms", time);
  return text;
}

std::string origin(const JudgedRoot& root) {
  return root.options_file.empty() ? root.source : root.options_file + ", which " + root.source + " leads to";
}

// Directories that a home directory may have: that one of them is not there says nothing.
bool is_only_possible(const JudgedRoot& root) {
  return root.options_file.empty() && (root.source == "TRV_HOME" || root.source == "QEL_HOME");
}

// The source without what was rejected.
std::string cure_for(const JudgedRoot& rejected, const SearchRoots& roots) {
  if (rejected.source == kRootOption) return "";
  if (!rejected.options_file.empty()) return "olh alt-path --forget";
  std::string rest;
  for (const SearchRoot& root : roots.roots)
    if (root.source == rejected.source && root.parent.empty()) rest += (rest.empty() ? "" : ":") + root.path;
  return rest.empty() ? "unset " + rejected.source : "export " + command_line({rejected.source + "=" + rest});
}

Diagnosis of_root(const SearchRoot& root) {
  if (root.source == kOwnSource) return {State::kOk, root.path + " (olh itself; other programs do not search it)"};
  const std::string named = root.path + " (" + root.source + ")";
  if (is_url(root.path.c_str()) != 1) return {State::kOk, named};
  const std::optional<double> time = probe_time(root.path);
  if (!time) return {State::kCannotTell, named + ": how long it takes to answer cannot be measured."};
  if (*time < kSlow) return {State::kOk, named + " answers in " + milliseconds(*time) + "."};
  return {State::kWarning,
          named + " takes " + milliseconds(*time) + " to answer, and every lookup asks several times.", kLimit};
}

// The elements of a search path, each URL whole again.
std::vector<std::string> elements_of(const std::string& paths) {
  std::vector<std::string> elements;
  bool after_host = false;
  for (const std::string& element : olh_viewers::pieces_of(paths, ':')) {
    const bool is_host = !elements.empty() && elements.back() == "http" && element.starts_with("//");
    const bool is_port = after_host && !element.empty() && element[0] >= '0' && element[0] <= '9';
    if (is_host || is_port) {
      elements.back() += ":" + element;
    } else {
      elements.push_back(element);
    }
    after_host = is_host;
  }
  return elements;
}

// A URL with a port is asked for without it first.
bool leads_to(std::string element, const std::string& root) {
  while (element.size() > 1 && element.ends_with('/')) element.pop_back();
  return element == root || (is_url(root.c_str()) == 1 && element.starts_with(root + ":"));
}

struct LeftOut {
  std::string what;
  std::string cure{};  // does the same for the programs that are started from now on
};

// A search path without what leads to a root; nothing when no element of it does.
std::optional<std::string> without(const std::string& root, const std::string& paths) {
  std::string rest;
  bool is_found = false;
  for (const std::string& element : elements_of(paths)) {
    const bool leads = leads_to(element, root);
    is_found = is_found || leads;
    if (!leads) rest += (rest.empty() ? "" : ":") + element;
  }
  return is_found ? std::optional(rest) : std::nullopt;
}

// Takes the root, or the tree whose options file names it, out of the variable or option that leads there; all of it when
// that cannot be done.
LeftOut leave_out(const JudgedRoot& waiting, std::string& host_roots) {
  const std::string& file = waiting.options_file;
  const std::string root = file.empty() ? waiting.path : file.substr(0, file.rfind('/'));
  if (waiting.source == kRootOption) {
    host_roots = without(root, host_roots).value_or("");
    return {root};
  }
  const std::string value = variable(waiting.source.c_str());
  if (const auto rest = without(root, value); rest && !rest->empty()) {
    setenv(waiting.source.c_str(), rest->c_str(), 1);
    return {root, "export " + command_line({waiting.source + "=" + *rest})};
  }
  for (const char* name : kRootVariables)
    if (value.empty() || waiting.source == name) unsetenv(name);
  return {waiting.source, "unset " + waiting.source};
}

// The lines that name alternates become comments. 'olh alt-path' would wait as well.
std::string cure_in(const std::string& options_file) {
  return command_on(options_file, {"sed", "-i", "/QEL_ALT_DOC_PATH/Is/^/# /", options_file});
}

}  // namespace

Diagnoses check_answering_roots(std::string& host_roots) {
  Diagnoses diagnoses;
  while (const std::optional<JudgedRoot> waiting = root_without_answer(host_roots)) {
    const LeftOut left_out = leave_out(*waiting, host_roots);
    diagnoses.push_back({State::kProblem,
                         waiting->path + " (" + origin(*waiting) + ") " + no_answer_in_time() +
                             ", and every program that asks for help waits for it; \"" + kLimit +
                             "\" limits each wait. The rest of this report leaves out " + left_out.what + ".",
                         waiting->options_file.empty() ? left_out.cure : cure_in(waiting->options_file)});
  }
  return diagnoses;
}

Diagnoses check_roots(const Machine& machine) {
  Diagnoses diagnoses;
  for (const SearchRoot& root : machine.roots.roots) diagnoses.push_back(of_root(root));
  for (const JudgedRoot& one : machine.roots.rejected) {
    if (is_only_possible(one)) continue;
    diagnoses.push_back(
        {State::kWarning,
         (one.path.empty() ? "an empty path" : one.path) + " (" + origin(one) + ") is no root: " + one.reason + ".",
         cure_for(one, machine.roots)});
  }
  const auto is_own = [](const SearchRoot& root) { return root.source == kOwnSource; };
  if (!std::ranges::all_of(machine.roots.roots, is_own)) return diagnoses;
  const std::string own = own_root();
  diagnoses.push_back({State::kProblem,
                       machine.roots.roots.empty()
                           ? "No documentation root is known: no document can be found."
                           : "No program but olh itself knows a documentation root: they find no document.",
                       own.empty() ? "export QEL_DOC_PATH=/path/to/docs"
                                   : "export " + command_line({std::string(kSystemRoots) + "=" + own})});
  return diagnoses;
}

}  // namespace olh
