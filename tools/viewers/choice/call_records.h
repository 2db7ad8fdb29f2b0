// How a viewer was called: one record a call, in a file.
//
// Knows    how a record is written: the number of arguments, the arguments, then what the process had inherited, each
//          field ended by a NUL. One write a record, so calls at the same time do not mix.
// Not      what a call means, how records are shown.
// For      olh-recorder, and the rehearsal of olh; the tests' fixture reads the same records.
#ifndef OLH_TOOLS_VIEWERS_CALL_RECORDS_H
#define OLH_TOOLS_VIEWERS_CALL_RECORDS_H

#include <string>
#include <vector>

namespace olh_viewers {

struct Call {
  std::vector<std::string> arguments;
  std::string open_descriptors;  // above 2, each followed by a blank
  std::string ignored_signals;   // the masks of /proc/self/status
  std::string blocked_signals;
};

// What this process was started with.
Call this_call(int argc, char** argv);
// Returns false when the record could not be written. A file that is not there is made only when it may be.
bool append_call(const std::string& file, const Call& call, bool may_make_file);
// Every whole record; none when nothing was noted yet.
std::vector<Call> read_calls(const std::string& file);

}  // namespace olh_viewers

#endif
