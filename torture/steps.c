/* Harm at a system call: the host is traced from before its operation to behind it. */
#define _GNU_SOURCE
#include <errno.h>
#include <signal.h>
#include <stddef.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/user.h>
#include <sys/wait.h>

#include "host.h"

/* Calls that give no error in a sound host, or that do what they do before they give one. */
static int may_fail(long number) {
  static const long never[] = {SYS_rt_sigprocmask, SYS_rt_sigaction, SYS_rt_sigpending, SYS_rt_sigtimedwait,
                               SYS_munmap,         SYS_futex,        SYS_close,         SYS_close_range,
                               SYS_wait4,          SYS_exit_group,   SYS_getpid,        SYS_gettid,
                               SYS_geteuid,        SYS_getuid,       SYS_umask,         SYS_clock_nanosleep};
  size_t i;
  for (i = 0; i < sizeof never / sizeof *never; ++i)
    if (never[i] == number) return 0;
  return 1;
}

/* Replaces the call at whose entry the child stands by one that is none, and its result by an error. */
static void let_fail(pid_t child, int error) {
#ifdef __x86_64__
  if (!may_fail(ptrace(PTRACE_PEEKUSER, child, offsetof(struct user_regs_struct, orig_rax), 0))) return;
  ptrace(PTRACE_POKEUSER, child, offsetof(struct user_regs_struct, orig_rax), -1L);
  ptrace(PTRACE_SYSCALL, child, 0, 0);
  waitpid(child, NULL, __WALL);
  ptrace(PTRACE_POKEUSER, child, offsetof(struct user_regs_struct, rax), (long)-error);
#else
  (void)child, (void)error;
#endif
}

long step(pid_t child, long at, int error, int* status) {
  long calls = 0;
  int entering = 1;
  long signal_to_pass = 0;
  if (waitpid(child, status, __WALL) != child || !WIFSTOPPED(*status)) return 0;
  ptrace(PTRACE_SETOPTIONS, child, 0, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
  for (;;) {
    ptrace(PTRACE_SYSCALL, child, 0, signal_to_pass);
    signal_to_pass = 0;
    if (waitpid(child, status, __WALL) != child || !WIFSTOPPED(*status)) return calls;
    if (WSTOPSIG(*status) == SIGSTOP) break;
    if (WSTOPSIG(*status) != (SIGTRAP | 0x80)) {
      signal_to_pass = WSTOPSIG(*status);
    } else if (!entering) {
      entering = 1;
    } else if (++calls == at && error == 0) {
      kill(child, SIGKILL);
    } else if (calls == at) {
      let_fail(child, error);
    } else {
      entering = 0;
    }
  }
  ptrace(PTRACE_DETACH, child, 0, 0);
  *status = -1;
  return calls;
}
