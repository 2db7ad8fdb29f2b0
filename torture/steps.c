/* Harm at a system call: the host is traced from before its operation to behind it, and so are its children until they
   become another program. */
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

/* The host and the children it has while they run its code: what becomes another program is let go. */
#define MOST_TRACED 16
static struct traced {
  pid_t pid;
  int inside; /* a system call */
} traced[MOST_TRACED];

static struct traced* entry_of(pid_t pid) {
  int i;
  for (i = 0; i < MOST_TRACED; ++i)
    if (traced[i].pid == pid) return &traced[i];
  return NULL;
}

static int is_anybody_traced(void) {
  int i;
  for (i = 0; i < MOST_TRACED; ++i)
    if (traced[i].pid != 0) return 1;
  return 0;
}

static void forget(struct traced* one) {
  if (one != NULL) one->pid = 0;
}

static struct traced* remember(pid_t pid) {
  struct traced* const one = entry_of(0);
  if (one != NULL) *one = (struct traced){pid, 0};
  return one;
}

static void let_go(struct traced* one) {
  ptrace(PTRACE_DETACH, one->pid, 0, 0);
  forget(one);
}

struct harm {
  long at;
  int error;
  long calls;
};

/* A system call begins or ends. */
static void stand_at_call(struct traced* one, struct harm* harm) {
  one->inside = !one->inside;
  if (!one->inside || ++harm->calls != harm->at) return;
  if (harm->error == 0) {
    kill(one->pid, SIGKILL);
  } else {
    let_fail(one->pid, harm->error);
    one->inside = 0;
  }
}

/* A traced process has stopped. Says whether it still has to be told to go on, and with which signal. */
static int handle_stop(struct traced* one, int status, int is_host, struct harm* harm, int* signal_to_pass) {
  const int signal_number = WSTOPSIG(status);
  *signal_to_pass = 0;
  if (status >> 16 == PTRACE_EVENT_EXEC || (is_host && signal_number == SIGSTOP)) return let_go(one), 0;
  if (signal_number == (SIGTRAP | 0x80)) stand_at_call(one, harm);
  if (signal_number != (SIGTRAP | 0x80) && status >> 16 == 0 && signal_number != SIGSTOP)
    *signal_to_pass = signal_number;
  return 1;
}

long step(pid_t host, long at, int error, int* status) {
  const long options = PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL | PTRACE_O_TRACEFORK | PTRACE_O_TRACEVFORK |
                       PTRACE_O_TRACECLONE | PTRACE_O_TRACEEXEC;
  struct harm harm = {at, error, 0};
  int now = 0;
  int signal_to_pass = 0;
  *status = -1;
  if (waitpid(host, &now, __WALL) != host || !WIFSTOPPED(now)) return 0;
  ptrace(PTRACE_SETOPTIONS, host, 0, options);
  remember(host);
  ptrace(PTRACE_SYSCALL, host, 0, 0);
  while (is_anybody_traced()) {
    const pid_t pid = waitpid(-1, &now, __WALL);
    struct traced* one = entry_of(pid);
    if (pid < 0) break;
    if (!WIFSTOPPED(now)) {
      forget(one);
      if (pid == host) *status = now;
    } else {
      if (one == NULL) one = remember(pid);
      if (one != NULL && handle_stop(one, now, pid == host, &harm, &signal_to_pass))
        ptrace(PTRACE_SYSCALL, pid, 0, signal_to_pass);
    }
  }
  return harm.calls;
}
