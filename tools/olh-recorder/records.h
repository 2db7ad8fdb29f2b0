// What a recording viewer has noted: one record a call, in the file NAME.log beside the viewer NAME.
//
// Knows    how a record is written: the number of arguments, the arguments, then what the process had inherited, each
//          field ended by a NUL. One write a record, so calls at the same time do not mix.
// Not      what a call means (viewer), how records are shown (commands).
// Owns     nothing.
// For      viewer and commands; the tests' fixture reads the same records.
#ifndef OLH_RECORDER_RECORDS_H
#define OLH_RECORDER_RECORDS_H

#include <string>
#include <vector>

namespace olh_recorder {

struct Call {
  std::vector<std::string> arguments;
  std::string open_descriptors;  // above 2, each followed by a blank
  std::string ignored_signals;   // the masks of /proc/self/status
  std::string blocked_signals;
};

// What this process was started with.
Call this_call(int argc, char** argv);
// Returns false when the record could not be written.
bool append(const std::string& viewer, const Call& call);
// Every whole record; none when nothing was noted yet.
std::vector<Call> read_calls(const std::string& viewer);

}  // namespace olh_recorder

#endif
