/* What a host may have done to itself before it calls the library. */
#define _GNU_SOURCE
#include <errno.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <locale.h>
#include <pthread.h>
#include <signal.h>
#include <spawn.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include "host.h"

extern char** environ;

static void limit(int resource, rlim_t value) {
  const struct rlimit both = {value, value};
  setrlimit((__rlimit_resource_t)resource, &both);
}

static void collect(int number) {
  const int before = errno;
  (void)number;
  while (waitpid(-1, NULL, WNOHANG) > 0) continue;
  errno = before;
}

static void nothing(int number) { (void)number; }

static void handle(int number, void (*handler)(int)) {
  struct sigaction action;
  memset(&action, 0, sizeof action);
  action.sa_handler = handler; /* without SA_RESTART */
  sigaction(number, &action, NULL);
}

static void close_standard_streams(int mask) {
  int fd;
  for (fd = 0; fd < 3; ++fd)
    if ((mask & (1 << fd)) != 0) close(fd);
}

static void interrupt_often(void) {
  const struct itimerval millisecond = {{0, 1000}, {0, 1000}};
  handle(SIGALRM, nothing);
  setitimer(ITIMER_REAL, &millisecond, NULL);
}

static void stand_in_removed_directory(void) {
  char name[] = "/dev/shm/torture-gone-XXXXXX";
  if (mkdtemp(name) == NULL || chdir(name) != 0 || rmdir(name) != 0) perror(name);
}

/* The system call with which the library watches over a started viewer for two seconds returns at once: thousands of
   cases start one. (A sleep of the C library is another call.) */
static void be_in_a_hurry(void) {
  struct sock_filter filter[] = {BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(struct seccomp_data, nr)),
                                 BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_nanosleep, 0, 1),
                                 BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO),
                                 BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW)};
  const struct sock_fprog program = {sizeof filter / sizeof *filter, filter};
  prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
  prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program);
}

void impose(const char* condition) {
  const char* const value = strchr(condition, '=');
  const int number = value == NULL ? 0 : atoi(value + 1);
  if (strcmp(condition, "borrowed_rights") != 0) be_in_a_hurry();
  if (strncmp(condition, "fds=", 4) == 0) limit(RLIMIT_NOFILE, (rlim_t)number);
  if (strncmp(condition, "closed=", 7) == 0) close_standard_streams(number);
  if (strncmp(condition, "file_size=", 10) == 0) limit(RLIMIT_FSIZE, (rlim_t)number);
  if (strcmp(condition, "sigchld_ignored") == 0) handle(SIGCHLD, SIG_IGN);
  if (strcmp(condition, "sigchld_collected") == 0) handle(SIGCHLD, collect);
  if (strcmp(condition, "eintr") == 0) interrupt_often();
  if (strcmp(condition, "removed_directory") == 0) stand_in_removed_directory();
  if (strncmp(condition, "locale=", 7) == 0 && setlocale(LC_ALL, value + 1) == NULL) found("skipped no such locale");
}

/* ---- threads ----------------------------------------------------------------------------------------------------- */

struct call {
  const struct operation* operation;
  const char* a;
  const char* b;
  int result;
};

static void* run_call(void* argument) {
  struct call* const call = argument;
  call->result = call->operation->call(call->a, call->b);
  return NULL;
}

static int on_small_stack(struct call* call) {
  pthread_attr_t attributes;
  pthread_t thread;
  pthread_attr_init(&attributes);
  pthread_attr_setstacksize(&attributes, 65536);
  if (pthread_create(&thread, &attributes, run_call, call) == 0) pthread_join(thread, NULL);
  pthread_attr_destroy(&attributes);
  return call->result;
}

static volatile int spawning;

static void* spawn_in_a_loop(void* unused) {
  char* const arguments[] = {(char*)"true", NULL};
  while (spawning) {
    pid_t child = 0;
    if (posix_spawn(&child, "/bin/true", NULL, NULL, arguments, environ) == 0) waitpid(child, NULL, 0);
  }
  return unused;
}

static int among_spawning_threads(struct call* call) {
  pthread_t threads[4];
  int i;
  spawning = 1;
  for (i = 0; i < 4; ++i) pthread_create(&threads[i], NULL, spawn_in_a_loop, NULL);
  usleep(1000);
  for (i = 0; i < 10; ++i) run_call(call);
  spawning = 0;
  for (i = 0; i < 4; ++i) pthread_join(threads[i], NULL);
  return call->result;
}

int call_under(const char* condition, const struct operation* operation, const char* a, const char* b) {
  struct call call = {operation, a, b, -1};
  if (strcmp(condition, "small_stack") == 0) return on_small_stack(&call);
  if (strcmp(condition, "spawning_threads") == 0) return among_spawning_threads(&call);
  run_call(&call);
  return call.result;
}
