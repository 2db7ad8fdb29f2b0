// A system call that a host's signal handler may interrupt.
//
// Knows    that EINTR means: again.
// For      every blocking call of the library. Safe between fork and exec.
#ifndef OLH_COMMON_RETRY_H
#define OLH_COMMON_RETRY_H

#include <cerrno>

namespace olh {

// Makes the call until it is not interrupted, with errno cleared before each try. Returns its result.
template <class Call>
auto retry_interrupted(Call call) noexcept {
  for (;;) {
    errno = 0;
    const auto result = call();
    if (result != -1 || errno != EINTR) return result;
  }
}

}  // namespace olh

#endif
