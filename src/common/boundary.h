// The door: nothing thrown inside the library reaches a host.
//
// Knows    that a failed allocation (or any other exception) is the ordinary failure of the function it stops.
// Not      which result that is: each exported function names its own.
// For      every exported function, and nothing else.
#ifndef OLH_COMMON_BOUNDARY_H
#define OLH_COMMON_BOUNDARY_H

#include <utility>

namespace olh {

// Runs `work` and returns its result, or `on_failure` when it throws. Allocates nothing itself.
template <class Result, class Work>
Result guarded(Result on_failure, Work&& work) noexcept {
  try {
    return std::forward<Work>(work)();
  } catch (...) {
    return on_failure;
  }
}

// The same for work without a result.
template <class Work>
void guarded(Work&& work) noexcept {
  guarded(0, [&work] {
    std::forward<Work>(work)();
    return 0;
  });
}

}  // namespace olh

#endif
