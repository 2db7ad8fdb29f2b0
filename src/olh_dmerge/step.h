// A step of a run, as hosts call it.
//
// Knows    that a root that is null is none: "" stands for the root directory.
// For      the steps that work on a root and answer a result.
#ifndef OLH_DMERGE_STEP_H
#define OLH_DMERGE_STEP_H

#include <string_view>
#include <utility>

#include "boundary.h"
#include "one_thread.h"

namespace olh {

// Runs `work` on the root; `failure` is the result when there is none, or when memory is exhausted.
template <class Work>
int run_step(int failure, const char* root, Work&& work, const char* caller = __builtin_FUNCTION()) noexcept {
  const OneThread inside(caller);
  if (root == nullptr) return failure;
  return guarded(failure, [&]() -> int { return std::forward<Work>(work)(std::string_view(root)); });
}

}  // namespace olh

#endif
