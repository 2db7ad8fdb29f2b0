// The files that settings and traces lie in: whether they can be read and written.
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "doctor_checks.h"
#include "shared.h"

namespace olh {

namespace {

std::string directory_of(const std::string& file) { return std::filesystem::absolute(file).parent_path().string(); }

// A line without "=" becomes a comment; everything else wants a person.
std::string cure_for(const SpoiltFile& spoilt) {
  if (spoilt.line == 0) return command_on(directory_of(spoilt.file), {"mv", spoilt.file, spoilt.file + ".old"});
  const std::string line = std::to_string(spoilt.line);
  return spoilt.reason.starts_with("no KEY") ? command_on(spoilt.file, {"sed", "-i", line + "s/^/# /", spoilt.file})
                                             : command_on(spoilt.file, {"editor", "+" + line, spoilt.file});
}

Diagnosis of_spoilt(const SpoiltFile& spoilt) {
  return {State::kProblem, place_of(spoilt.file, spoilt.line) + ": " + spoilt.reason + ". The whole file is ignored.",
          cure_for(spoilt)};
}

// What keeps lines from being appended; "" for nothing.
std::string trace_fault(const std::string& file) {
  struct stat status = {};
  if (stat(file.c_str(), &status) == 0) {
    if (!S_ISREG(status.st_mode) && !S_ISCHR(status.st_mode)) return "is no regular file";
    return access(file.c_str(), W_OK) == 0 ? "" : "may not be written by you";
  }
  const std::string directory = directory_of(file);
  if (access(directory.c_str(), F_OK) != 0) return "is in a directory that is not there";
  return access(directory.c_str(), W_OK | X_OK) == 0 ? "" : "is in a directory that you may not write to";
}

}  // namespace

std::string command_on(const std::string& place, const std::vector<std::string>& words) {
  return (access(place.c_str(), W_OK) == 0 ? "" : "sudo ") + command_line(words);
}

Diagnoses check_option_files(const Machine& machine) {
  Diagnoses diagnoses;
  const std::string own = user_option_file();
  for (const SpoiltFile& one : user_file_faults()) diagnoses.push_back(of_spoilt(one));
  for (const SpoiltFile& one : machine.roots.spoilt) diagnoses.push_back(of_spoilt(one));
  if (!diagnoses.empty()) return diagnoses;
  const bool is_there = access(own.c_str(), F_OK) == 0;
  return {{State::kOk, is_there ? own + " can be read." : "There is no " + own + ", and none is needed."}};
}

Diagnoses check_trace_log(const Machine&) {
  const std::string file = variable("OLH_LOG_HELP");
  if (file.empty()) return {{State::kOk, "No trace log is wanted (OLH_LOG_HELP is not set)."}};
  const std::string fault = trace_fault(file);
  if (fault.empty()) return {{State::kOk, file + " takes the lines of the trace."}};
  return {{State::kWarning, file + " " + fault + ": there is no trace log.",
           "export OLH_LOG_HELP=\"$HOME/olh_trace.log\""}};
}

}  // namespace olh
