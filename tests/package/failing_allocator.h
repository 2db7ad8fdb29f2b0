// Lets an allocation of the library's choice fail: operator new, and malloc, calloc, realloc and strdup as the library's
// own objects call them (the linker wraps those names).
#ifndef OLH_TESTS_FAILING_ALLOCATOR_H
#define OLH_TESTS_FAILING_ALLOCATOR_H

namespace olh_test {

// From now on `successes` allocations succeed and the `failures` behind them fail; a negative number: none fails.
void fail_allocations_after(long successes, long failures = 1'000'000'000);

// How many have been asked for since then.
long allocations_asked();

}  // namespace olh_test

#endif
