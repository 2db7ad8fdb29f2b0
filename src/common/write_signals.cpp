#include "write_signals.h"

#include <ctime>

#include "retry.h"

namespace olh {

namespace {
constexpr int kWriteSignals[] = {SIGPIPE, SIGXFSZ};
}

WriteSignalsHeldBack::WriteSignalsHeldBack() noexcept {
  sigset_t both;
  sigset_t pending;
  sigemptyset(&both);
  sigemptyset(&raised_here_);
  sigpending(&pending);
  for (const int signal : kWriteSignals) {
    sigaddset(&both, signal);
    if (sigismember(&pending, signal) != 1) sigaddset(&raised_here_, signal);
  }
  pthread_sigmask(SIG_BLOCK, &both, &mask_before_);
}

// The kernel sends both to the thread that writes, so this thread finds them.
WriteSignalsHeldBack::~WriteSignalsHeldBack() {
  constexpr timespec kNoWait = {};
  const auto take_one = [this, &kNoWait] { return sigtimedwait(&raised_here_, nullptr, &kNoWait); };
  while (retry_interrupted(take_one) > 0) {
  }
  pthread_sigmask(SIG_SETMASK, &mask_before_, nullptr);
}

}  // namespace olh
