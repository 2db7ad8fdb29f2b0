#include "detached_start.h"

#include <sched.h>
#include <sys/mman.h>
#include <sys/wait.h>

#include <atomic>
#include <csignal>
#include <memory>
#include <new>
#include <utility>

#include "child.h"
#include "olh/olh.h"
#include "raw_call.h"

namespace olh {

namespace {

constexpr long kSecondsToWatch = 2;
constexpr int kNothingSaid = -1;

// What the host and its children share. For two seconds the intermediate child lives in here and touches nothing else,
// while the host goes on. So it is given back only when that child has said that both are done with it: not when a
// signal has ended it, and not when a handler of the host jumps out of the wait.
struct Watch {
  explicit Watch(std::unique_ptr<ChildProgram> prepared) noexcept
      : program(prepared.release()), memory(can_share_memory() ? CLONE_VM : 0) {}

  ChildProgram* const program;  // goes with give_back
  int memory;
  std::atomic<int> outcome = kNothingSaid;  // the status of the intermediate child, for a host that is told none
  ChildStack stack_of_watcher;
  ChildStack stack_of_viewer;
};

// Null when there is no memory for it.
Watch* make_watch(std::unique_ptr<ChildProgram> program) noexcept {
  void* const place = mmap(nullptr, sizeof(Watch), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  return place == MAP_FAILED ? nullptr : ::new (place) Watch(std::move(program));
}

// A child with a copy of the host's memory may still be at work, and has this mapping in common with the host: nothing is
// written into it.
void give_back(Watch* watch) noexcept {
  const std::unique_ptr<ChildProgram> program(watch->program);
  munmap(watch, sizeof(Watch));
}

// ---- in the children: raw calls only ------------------------------------------------------------------------------

// A process that ignores its children would not be told how they end.
void care_for_children() noexcept {
  const long standard[16] = {};
  raw_call(SYS_rt_sigaction, SIGCHLD, standard, 0, _NSIG / 8);
}

// What the viewer's end, if it has ended, means for the one who asked for it.
int status_of_viewer(pid_t viewer) noexcept {
  int status = 0;
  const long ended = raw_call(SYS_wait4, viewer, &status, WNOHANG);
  if (ended != viewer || !WIFEXITED(status) || WEXITSTATUS(status) == 0) return OLH_RESULT_OK;
  return WEXITSTATUS(status) == ENOENT ? OLH_RESULT_NO_PROGRAM : OLH_RESULT_FAILED;
}

int become_viewer(void* shared) noexcept { return static_cast<Watch*>(shared)->program->execute(); }

int start_and_watch_viewer(void* shared) noexcept {
  Watch& watch = *static_cast<Watch*>(shared);
  care_for_children();
  watch.program->keep_standard_descriptors();
  const pid_t viewer = start_child(become_viewer, &watch, watch.stack_of_viewer, watch.memory | CLONE_VFORK);
  int status = OLH_RESULT_FAILED;
  if (viewer >= 0) {
    const long time[] = {kSecondsToWatch, 0};  // as the kernel has it behind this call
    raw_call(SYS_nanosleep, time, 0);
    status = status_of_viewer(viewer);
  }
  watch.outcome = status;
  return status;
}

// ---- in the host -------------------------------------------------------------------------------------------------

// Where the host ignores its children, or collects them elsewhere, the child's end is all that the wait tells: what it
// said is there. One that has said nothing was ended by a signal, which counts as started.
DetachedStart wait_for(pid_t child, const Watch& watch) noexcept {
  long ended = 0;
  do {
    ended = raw_call(SYS_wait4, child, 0, 0, 0);
  } while (ended == -EINTR);
  if (ended != child && ended != -ECHILD) return {StartOutcome::kWaitFailed};
  const int status = watch.outcome;
  if (status == kNothingSaid || status == OLH_RESULT_OK) return {};
  return {StartOutcome::kFailed, status};
}

}  // namespace

DetachedStart start_detached(std::span<const std::string> words) {
  Watch* const watch = make_watch(std::make_unique<ChildProgram>(words));
  if (watch == nullptr) return {StartOutcome::kForkFailed};
  const pid_t child = start_child(start_and_watch_viewer, watch, watch->stack_of_watcher, watch->memory);
  const DetachedStart start = child < 0 ? DetachedStart{StartOutcome::kForkFailed} : wait_for(child, *watch);
  const bool ended = start.outcome != StartOutcome::kWaitFailed && watch->outcome != kNothingSaid;
  const bool is_copied = watch->memory == 0;  // the children do not look at the host's
  if (child < 0 || ended || is_copied) give_back(watch);
  return start;
}

}  // namespace olh
