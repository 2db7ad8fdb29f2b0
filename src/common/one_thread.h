// The promise that hosts keep: one thread at a time is inside the library.
//
// Knows    with OLH_DETECT_THREADS, which thread is inside; a call from another one meanwhile is named in the debug
//          output, and goes on. The same thread may come in again, as a callback does. Without the option nothing is
//          checked, stored or called.
// For      the two ways into the library: EntryPoint, and the wrappers of the locator.
#ifndef OLH_COMMON_ONE_THREAD_H
#define OLH_COMMON_ONE_THREAD_H

namespace olh {

#ifdef OLH_DETECT_THREADS

// Made at the beginning of an exported function, with its name; destroyed at its end.
class OneThread {
 public:
  explicit OneThread(const char* name) noexcept;
  OneThread(const OneThread&) = delete;
  OneThread& operator=(const OneThread&) = delete;
  ~OneThread();

 private:
  bool is_counted_;
};

#else

class OneThread {
 public:
  explicit constexpr OneThread(const char*) noexcept {}
};

#endif

}  // namespace olh

#endif
