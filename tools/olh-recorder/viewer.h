// A recording viewer: notes how it was called and answers as it is told.
//
// Knows    that a call with -remote 'ping()' is a ping, another -remote call a remote command, everything else a start;
//          that the files NAME.ping, NAME.remote and NAME.start beside the viewer NAME say how to answer: exit status,
//          seconds to stay, and after a line feed the text to print. Without a file a ping says that nothing runs,
//          and everything else ends at once with 0.
// Not      who writes those files (commands, the tests' fixture).
// Owns     nothing.
// For      main.
#ifndef OLH_RECORDER_VIEWER_H
#define OLH_RECORDER_VIEWER_H

#include <string>

namespace olh_recorder {

// Returns the exit status; 99 when the call could not be noted.
int play_viewer(const std::string& viewer, int argc, char** argv);

}  // namespace olh_recorder

#endif
