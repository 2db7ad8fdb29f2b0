// The signals that a write raises: SIGPIPE where nobody reads any more, SIGXFSZ where a file would grow over its limit.
//
// Knows    that either would end a host; while held back they leave only the failed write (EPIPE, EFBIG).
// Owns     the calling thread's mask for these two, for as long as it lives; afterwards the mask is as before. What a
//          write raised is gone, what was pending before is pending still.
// For      whoever writes to a file or stream that the host or its user has chosen.
#ifndef OLH_COMMON_WRITE_SIGNALS_H
#define OLH_COMMON_WRITE_SIGNALS_H

#include <csignal>

namespace olh {

// Made and destroyed by the same thread. May be nested.
class WriteSignalsHeldBack {
 public:
  WriteSignalsHeldBack() noexcept;
  WriteSignalsHeldBack(const WriteSignalsHeldBack&) = delete;
  WriteSignalsHeldBack& operator=(const WriteSignalsHeldBack&) = delete;
  ~WriteSignalsHeldBack();

 private:
  sigset_t raised_here_;  // of the two, those that were not pending before
  sigset_t mask_before_;
};

}  // namespace olh

#endif
