// Starting other programs, by words and never through a shell.
//
// Knows    how long a program is watched, and what its end means.
// Not      which program is started.
// For      both adapters; olh, which asks itself.
#ifndef OLH_TOOLS_VIEWERS_CHILD_H
#define OLH_TOOLS_VIEWERS_CHILD_H

#include <optional>

#include "words.h"

namespace olh_viewers {

// Starts a viewer in a session of its own, without the terminal's streams, and watches it for so long. Returns an
// ExitStatus: kExitShown when it still runs or has ended with 0, kExitNoProgram when there is no such program,
// kExitFailed when it ended otherwise, also by a signal. `said` becomes the end of a sentence about a failure. A program of
// which `any_status` is good has failed only when it could not be started, or was ended by a signal.
int start_and_watch(const Words& words, int milliseconds, std::string& said, bool any_status = false);

// What a program prints, its input taken from a file ("": none); nothing when it could not be run, ended with another
// status than 0, or took longer than so many milliseconds. It works in that directory ("": this one).
std::optional<std::string> output_of(const Words& words, const std::string& input_file = "", int milliseconds = 10000,
                                     const std::string& directory = "");

struct Heard {
  std::string text;
  bool in_time = true;  // false: it was silent for too long, and `text` is what it said until then
};

// What a program prints that may never end, started as it would be from here, without its complaints. It is left to itself
// once it has been silent for so many milliseconds.
Heard heard_from(const Words& words, int milliseconds_of_silence);

// Runs a program here, with these streams, and waits for its end. Returns its status, kExitFailed when it has none.
int run_and_wait(const Words& words);

// Writes a text to standard output. When `paged`, a terminal that is too small for it and has nothing else to do gets it
// through a pager.
void print_text(const std::string& text, bool paged);

}  // namespace olh_viewers

#endif
