// The promise that hosts keep: one thread at a time is inside the library.
//
// Knows    with OLH_DETECT_THREADS, how many threads are inside; a call from one more meanwhile is named in the debug
//          output, and goes on. The same thread may come in again, as a callback does. Without the option nothing is
//          checked, stored or called.
// For      every exported function, but for those that have no state: the string helpers, what asks a file alone, and the
//          entry points that do nothing. Most have it through EntryPoint, the wrappers of the locator or the steps of the
//          generator.
#ifndef OLH_COMMON_ONE_THREAD_H
#define OLH_COMMON_ONE_THREAD_H

namespace olh {

#ifdef OLH_DETECT_THREADS

// Made at the beginning of an exported function, with its name; destroyed at its end.
class [[maybe_unused]] OneThread {
 public:
  explicit OneThread(const char* name = __builtin_FUNCTION()) noexcept;
  OneThread(const OneThread&) = delete;
  OneThread& operator=(const OneThread&) = delete;
  ~OneThread();
};

#else

class [[maybe_unused]] OneThread {
 public:
  explicit constexpr OneThread(const char* = nullptr) noexcept {}
};

#endif

}  // namespace olh

#endif
