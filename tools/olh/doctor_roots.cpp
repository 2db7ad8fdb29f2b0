// The documentation roots: whether there are any, what was rejected, how long those behind URLs take to answer.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "child.h"
#include "doctor_checks.h"
#include "environment.h"
#include "olh/support.h"
#include "output.h"
#include "root_probe.h"
#include "sample.h"

namespace olh {

namespace {

constexpr const char* kVariables[] = {"QEL_OVERRIDE_DOC_PATH", "QEL_DOC_PATH", "QEL_PRODUCT_DOC_PATH"};
constexpr double kSlow = 1000;  // milliseconds

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
  if (!rejected.options_file.empty()) return "olh alt-path --forget";
  std::string rest;
  for (const SearchRoot& root : roots.roots)
    if (root.source == rejected.source && root.parent.empty()) rest += (rest.empty() ? "" : ":") + root.path;
  return rest.empty() ? "unset " + rejected.source : "export " + command_line({rejected.source + "=" + rest});
}

Diagnosis of_root(const SearchRoot& root) {
  const std::string named = root.path + " (" + root.source + ")";
  if (is_url(root.path.c_str()) != 1) return {State::kOk, named, ""};
  const std::optional<double> time = probe_time(root.path);
  if (!time) return {State::kCannotTell, named + ": how long it takes to answer cannot be told.", ""};
  if (*time < kSlow) return {State::kOk, named + " answers in " + milliseconds(*time) + ".", ""};
  return {State::kWarning,
          named + " takes " + milliseconds(*time) + " to answer, and every lookup asks several times.", ""};
}

}  // namespace

Diagnoses check_answering_roots() {
  const auto begin = std::chrono::steady_clock::now();
  const bool is_built = olh_viewers::output_of({own_program(), "paths"}).has_value();
  constexpr auto kNearlyTheLimit = std::chrono::seconds(9);
  if (is_built || std::chrono::steady_clock::now() - begin < kNearlyTheLimit) return {};
  Diagnoses diagnoses;
  for (const char* name : kVariables) {
    const std::string value = variable(name).value_or("");
    if (value.find("http://") == std::string::npos) continue;
    diagnoses.push_back({State::kProblem,
                         std::string(name) + " names a root behind a URL, and the search path is not built " +
                             "within 10 seconds: programs wait for it. From here on it is left out.",
                         std::string("unset ") + name});
    unsetenv(name);
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
  if (!machine.roots.roots.empty()) return diagnoses;
  const std::string sample = sample_root();
  diagnoses.push_back({State::kProblem, "No documentation root is known: no document can be found.",
                       "export " + command_line({"QEL_DOC_PATH=" + (sample.empty() ? "/path/to/docs" : sample)})});
  return diagnoses;
}

}  // namespace olh
