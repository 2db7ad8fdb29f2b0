// The variables that are set, and those that were meant to be.
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <numeric>
#include <string_view>

#include "browser_reach.h"
#include "doctor_checks.h"
#include "olh/support.h"
#include "shared.h"

namespace olh {

namespace {

constexpr std::array<std::string_view, 16> kKnown = {"QEL_OVERRIDE_DOC_PATH",
                                                     "QEL_DOC_PATH",
                                                     "QEL_PRODUCT_DOC_PATH",
                                                     "TRV_HOME",
                                                     "QEL_HOME",
                                                     kSystemRoots,
                                                     "QEL_HTML_BROWSER",
                                                     "QEL_PDF_READER",
                                                     "QEL_DOC_TYPE",
                                                     "QEL_OLH_DISPLAY_TYPE",
                                                     "OLH_PROBE_TIMEOUT",
                                                     "OLH_BROWSER_PROGRAM",
                                                     "OLH_PDF_PROGRAM",
                                                     olh_viewers::kServeVariable,
                                                     "OLH_LOG_HELP",
                                                     "OLH_DEBUG"};
constexpr const char* kAlternate = "QEL_ALT_DOC_PATH";
constexpr std::size_t kMostTypingErrors = 3;

// How many letters have to be put in, taken out or changed to make one name of the other.
std::size_t distance(std::string_view one, std::string_view other) {
  std::vector<std::size_t> row(other.size() + 1);
  std::iota(row.begin(), row.end(), 0);
  for (std::size_t i = 0; i < one.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i + 1;
    for (std::size_t j = 0; j < other.size(); ++j) {
      const std::size_t changed = diagonal + (one[i] == other[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({changed, row[j] + 1, row[j + 1] + 1});
    }
  }
  return row.back();
}

Diagnosis of_unknown(const std::string& name) {
  if (name == kAlternate)
    return {State::kWarning, name + " is a key of qel_doc_options.ini; as a variable it is ignored.",
            "olh alt-path \"$" + name + "\""};
  std::string_view nearest = kKnown.front();
  for (const std::string_view known : kKnown)
    if (distance(name, known) < distance(name, nearest)) nearest = known;
  if (distance(name, nearest) > kMostTypingErrors)
    return {State::kCannotTell, name + " is set; the library knows no such variable, another program may."};
  const std::string meant(nearest);
  return {State::kWarning, name + " is set; the library knows no such variable. Is " + meant + " meant?",
          "export " + meant + "=\"$" + name + "\""};
}

bool is_order(const std::string& value) {
  for (const std::string& one : olh_viewers::pieces_of(olh_viewers::lower_case(value), ':'))
    if (one == "html" || one == "htm" || one == "pdf") return true;
  return false;
}

bool is_display_type(const std::string& value) {
  const std::string type = olh_viewers::lower_case(value);
  return type == "normal" || type == "topic" || type == "popup";
}

bool is_positive_number(const std::string& value) {
  double number = 0;
  const char* const end = value.data() + value.size();
  const std::from_chars_result read = std::from_chars(value.data(), end, number);
  return read.ec == std::errc() && read.ptr == end && number > 0;
}

Diagnosis of_known(const std::string& name, const std::string& value) {
  if (value.size() >= OLH_BUFFER_SIZE)
    return {State::kProblem, name + " holds more than 4,095 characters and is treated as unset.", "unset " + name};
  const auto in_vain = [&](const char* why, const std::string& cure) {
    return Diagnosis{State::kWarning, name + " is " + command_line({value}) + ", " + why, cure};
  };
  if (name == "QEL_DOC_TYPE" && !is_order(value))
    return in_vain("which names neither html nor pdf and is ignored.", "export QEL_DOC_TYPE=html:pdf");
  if (name == "QEL_OLH_DISPLAY_TYPE" && !is_display_type(value))
    return in_vain("none of normal, topic and popup, and is ignored.", "unset " + name);
  if (name == "OLH_PROBE_TIMEOUT" && !is_positive_number(value))
    return in_vain("which is no positive number, and is ignored.", "export OLH_PROBE_TIMEOUT=2");
  const std::string fault = name == olh_viewers::kServeVariable ? olh_viewers::fault_of_serve(value) : "";
  if (!fault.empty()) return in_vain((fault + ".").c_str(), "export " + name + "=auto");
  return {State::kOk, name + "=" + command_line({value})};
}

}  // namespace

Diagnoses check_variables(const Machine&) {
  Diagnoses diagnoses;
  for (char** entry = environ; *entry != nullptr; ++entry) {
    const std::string text = *entry;
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos || equals + 1 == text.size()) continue;  // an empty one counts as not set
    const std::string name = text.substr(0, equals);
    if (std::find(kKnown.begin(), kKnown.end(), name) != kKnown.end())
      diagnoses.push_back(of_known(name, text.substr(equals + 1)));
    else if (name.starts_with("QEL_") || name.starts_with("OLH_"))
      diagnoses.push_back(of_unknown(name));
  }
  std::sort(diagnoses.begin(), diagnoses.end(),
            [](const Diagnosis& a, const Diagnosis& b) { return a.sentence < b.sentence; });
  std::array<char, OLH_BUFFER_SIZE> home{};
  if (GetHomeDirectory(home.data()) != 1)
    diagnoses.push_back({State::kWarning,
                         "HOME names no directory: your option file can be neither read nor written.",
                         "export HOME=~$(id -un)"});
  if (diagnoses.empty()) diagnoses.push_back({State::kOk, "None of the library's variables is set."});
  return diagnoses;
}

}  // namespace olh
