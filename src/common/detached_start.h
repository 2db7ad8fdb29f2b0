// Starting a program that outlives the host.
//
// Knows    the double fork, the search along PATH, what a child may do between fork and exec, and how to learn the
//          outcome from a host that ignores SIGCHLD.
// Not      which program is started, nor what a launcher writes about it.
// For      both viewer launchers.
#ifndef OLH_COMMON_DETACHED_START_H
#define OLH_COMMON_DETACHED_START_H

#include <span>
#include <string>

namespace olh {

enum class StartOutcome {
  kStarted,     // the program runs, or has ended well
  kFailed,      // it ended within the two seconds: `status` says how
  kForkFailed,  // the host could not fork
  kWaitFailed   // the outcome could not be learned
};

struct DetachedStart {
  StartOutcome outcome = StartOutcome::kStarted;
  // With kFailed: OLH_RESULT_NO_PROGRAM when there is no such program (or it ended with the number of ENOENT),
  // OLH_RESULT_FAILED for every other failure.
  int status = 0;
};

// Starts words[0], which is looked up along PATH when it has no "/", with all the words as its arguments. Waits two
// seconds to see whether it stays. The program gets the descriptors 0, 1 and 2 (and no other), the default signal
// handlers and an empty signal mask, and belongs to init in the end: nobody has to wait for it.
DetachedStart start_detached(std::span<const std::string> words);

}  // namespace olh

#endif
