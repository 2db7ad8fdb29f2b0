#include "one_thread.h"

#ifdef OLH_DETECT_THREADS

#include <pthread.h>

#include <atomic>

#include "olh/support.h"

namespace olh {

namespace {

std::atomic<pthread_t> inside{};  // none: 0, which is no thread's
int depth = 0;                    // of its calls; only that thread changes it

}  // namespace

OneThread::OneThread(const char* name) noexcept {
  pthread_t found{};
  const pthread_t own = pthread_self();
  is_counted_ = inside.compare_exchange_strong(found, own) || found == own;
  if (is_counted_)
    ++depth;
  else
    print_debug("%s: called while another thread is inside the library\n", name);
}

OneThread::~OneThread() {
  if (is_counted_ && --depth == 0) inside = pthread_t{};
}

}  // namespace olh

#endif
