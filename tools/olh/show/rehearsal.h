// A call that shows something, whose viewers are this program itself: it shows nothing, and tells exactly what the
// library sends.
//
// Knows    that a launcher takes any program for its viewer (OlhBrowserSetPath, OlhAcroSetPath: this process only), and
//          that the viewer finds in a variable the file into which it reports.
// Not      which program the user would see (chosen_viewer).
// For      --print, and main, which answers as the viewer when the variable is there.
#ifndef OLH_TOOLS_REHEARSAL_H
#define OLH_TOOLS_REHEARSAL_H

#include <functional>
#include <string>
#include <vector>

#include "olh/olh.h"

namespace olh {

// Names the file in the environment of the viewer. Lower case, since it is no setting of anybody's.
inline constexpr const char* kRehearsalVariable = "olh_rehearsal_file";

struct Rehearsal {
  int result = OLH_RESULT_FAILED;      // what the call answered
  bool in_browser = false;             // sent to a browser that runs; else to a reader that is started
  std::vector<std::string> arguments;  // the last call that the viewer got, the question whether it runs apart
  std::string url;                     // what the browser is to show
};

// Makes the call. Nothing of it reaches the trace log. The launchers of this process are of no other use
// afterwards. Throws std::runtime_error when there is no place for the report.
Rehearsal rehearse(const std::function<int()>& call);

// The other side: notes the arguments in the file and answers as a running browser, or as a reader.
int answer_as_viewer(const char* file, int argc, char** argv);

}  // namespace olh

#endif
