#include "one_thread.h"

#ifdef OLH_DETECT_THREADS

#include <atomic>

#include "olh/support.h"

namespace olh {

namespace {

std::atomic<int> threads_inside = 0;
thread_local int depth = 0;  // of the calls of this thread

}  // namespace

OneThread::OneThread(const char* name) noexcept {
  if (depth++ == 0 && threads_inside++ > 0)
    print_debug("%s: called while another thread is inside the library\n", name);
}

OneThread::~OneThread() {
  if (--depth == 0) --threads_inside;
}

}  // namespace olh

#endif
