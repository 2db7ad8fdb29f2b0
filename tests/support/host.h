// What a host may be like: each of these classes holds as long as it lives.
#ifndef OLH_TESTS_HOST_H
#define OLH_TESTS_HOST_H

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>

#include <csignal>
#include <cstddef>
#include <iterator>

namespace olh_test {

// A host of which the system takes no more than so much of a resource (RLIMIT_...).
class Limit {
 public:
  Limit(int resource, rlim_t most) : resource_(resource) {
    getrlimit(resource, &before_);
    const rlimit limit = {most, before_.rlim_max};
    setrlimit(resource, &limit);
  }
  ~Limit() { setrlimit(resource_, &before_); }
  Limit(const Limit&) = delete;
  Limit& operator=(const Limit&) = delete;

 private:
  int resource_;
  rlimit before_ = {};
};

// A host with closed standard streams.
class ClosedStreams {
 public:
  ClosedStreams() {
    for (int fd = 0; fd < 3; ++fd) close(fd);
  }
  ~ClosedStreams() {
    for (int fd = 0; fd < 3; ++fd) dup2(saved_[fd], fd);
  }
  ClosedStreams(const ClosedStreams&) = delete;
  ClosedStreams& operator=(const ClosedStreams&) = delete;

 private:
  int saved_[3] = {dup(0), dup(1), dup(2)};
};

// A host with a signal handler; a call that waits is interrupted by it.
inline void handle(int number, void (*handler)(int)) {
  struct sigaction action = {};
  action.sa_handler = handler;
  sigaction(number, &action, nullptr);
}

// A host whose own timer interrupts every call that waits.
inline void interrupt_every(suseconds_t microseconds) {
  handle(SIGALRM, [](int) {});
  const itimerval timer = {{0, microseconds}, {0, microseconds}};
  setitimer(ITIMER_REAL, &timer, nullptr);
}

// A thread that the system refuses a call with this error, for good; so it does the thread's children. Returns whether there
// are such filters here.
inline bool refuse(long system_call, int error) {
  sock_filter program[] = {
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<unsigned>(system_call), 0, 1),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | static_cast<unsigned>(error)),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
  };
  const sock_fprog filter = {std::size(program), program};
  return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

}  // namespace olh_test

#endif
