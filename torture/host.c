/* A host that is treated badly. Every case is a process of its own, and this one watches over it.

   Usage: torture_host kinds | operations
          torture_host serve OPERATION CONDITION [A B]     cases read from standard input, one a line:
              KIND N ERROR FOR_GOOD   KIND one of those of faults.h; "none"; "kill" or "step", at a system call
   Each case is answered by a line: the result of the operation, that of the same one again without a fault (-1: none), how
   many calls of the kind were made, and what was found, each "KIND what" between tabs. */
#define _GNU_SOURCE
#include <errno.h>
#include <fcntl.h>
#include <locale.h>
#include <signal.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include "faults.h"
#include "host.h"
#include "olh/support.h"

extern char** environ;

#define TIME_LIMIT 10 /* seconds that a case may take */
#define DESCRIPTORS 256

static const char* const kind_names[] = {
#define NAME(name, ...) #name,
    FAULT_KINDS(NAME)
#undef NAME
};

static void print_kinds(void) {
#define ERRORS(name, ...)                                                          \
  {                                                                                \
    const int errors[] = {__VA_ARGS__};                                            \
    size_t i;                                                                      \
    printf(#name);                                                                 \
    for (i = 0; i < sizeof errors / sizeof *errors; ++i) printf(" %d", errors[i]); \
    puts("");                                                                      \
  }
  FAULT_KINDS(ERRORS)
#undef ERRORS
}

/* ---- what a case tells: shared with its process ------------------------------------------------------------------ */

static struct shared {
  struct fault_plan plan;
  int result;
  int again;
  size_t used;
  char findings[4096];
} * shared;

void found(const char* format, ...) {
  char* const to = shared->findings + shared->used;
  const size_t room = sizeof shared->findings - shared->used;
  char* byte;
  va_list arguments;
  va_start(arguments, format);
  vsnprintf(to, room, format, arguments);
  va_end(arguments);
  for (byte = to; *byte != '\0'; ++byte)
    if (*byte == '\n' || *byte == '\t') *byte = ' ';
  shared->used += strlen(to);
  if (shared->used + 2 < sizeof shared->findings) shared->findings[shared->used++] = '\t';
}

/* ---- what the library may not change ----------------------------------------------------------------------------- */

static struct state {
  int descriptors[DESCRIPTORS];
  struct sigaction handlers[NSIG];
  sigset_t mask;
  sigset_t pending;
  mode_t umask;
  char directory[4096];
  char locale[256];
  char environment[16384];
} before, after;

static void look(struct state* state) {
  size_t used = 0;
  char** entry;
  int i;
  memset(state, 0, sizeof *state);
  for (i = 0; i < DESCRIPTORS; ++i) state->descriptors[i] = fcntl(i, F_GETFD);
  for (i = 1; i < NSIG; ++i) sigaction(i, NULL, &state->handlers[i]);
  sigprocmask(SIG_SETMASK, NULL, &state->mask);
  sigpending(&state->pending);
  state->umask = umask(0);
  umask(state->umask);
  if (getcwd(state->directory, sizeof state->directory) == NULL) *state->directory = '\0';
  snprintf(state->locale, sizeof state->locale, "%s", setlocale(LC_ALL, NULL));
  for (entry = environ; *entry != NULL && used < sizeof state->environment; ++entry)
    used += (size_t)snprintf(state->environment + used, sizeof state->environment - used, "%s\n", *entry);
}

static void compare_states(void) {
  int i;
  look(&after);
  for (i = 0; i < DESCRIPTORS; ++i)
    if (before.descriptors[i] != after.descriptors[i]) found("leak descriptor %d", i);
  for (i = 1; i < NSIG; ++i)
    if (before.handlers[i].sa_handler != after.handlers[i].sa_handler) found("state handler of signal %d", i);
  if (memcmp(&before.mask, &after.mask, sizeof before.mask) != 0) found("state signal mask");
  if (memcmp(&before.pending, &after.pending, sizeof before.pending) != 0) found("state a signal is pending");
  if (before.umask != after.umask) found("state umask");
  if (strcmp(before.directory, after.directory) != 0) found("state working directory");
  if (strcmp(before.locale, after.locale) != 0) found("state locale");
  if (strcmp(before.environment, after.environment) != 0) found("state environment");
  if (!buffer_is_whole()) found("crash written past a buffer");
  if (waitpid(-1, NULL, WNOHANG) != -1 || errno != ECHILD) found("leak a child");
}

/* ---- a case ------------------------------------------------------------------------------------------------------ */

struct order {
  char kind[32];
  long at;
  int error;
  int for_good;
  const char* condition;
  const struct operation* operation;
  const char* a;
  const char* b;
};

static int is_stepped(const struct order* order) {
  return strcmp(order->kind, "kill") == 0 || strcmp(order->kind, "step") == 0;
}

static void check_result(const struct order* order, int result) {
  const int may_be_refused = result == OLH_RESULT_INVALID && *order->a == '\0';
  if (result < 0 || result > 9 || (!may_be_refused && strchr(order->operation->documented, '0' + result) == NULL))
    found("result %d", result);
  /* A program that was chosen is the one in use, also when it could not be stored: but for want of memory. */
  const int is_in_use = result == 0 || (result == 5 && order->error != ENOMEM);
  if (strcmp(order->operation->name, "set_viewer") == 0 && is_in_use) {
    char program[OLH_BUFFER_SIZE] = "";
    OlhGetViewerPath(OLH_VIEWER_HTML, program);
    if (strstr(program, order->a) == NULL) found("result %d, and the program in use is %s", result, program);
  }
}

static void run_case(const struct order* order) {
  impose(order->condition);
  look(&before);
  if (is_stepped(order)) {
    ptrace(PTRACE_TRACEME, 0, 0, 0);
    raise(SIGSTOP);
  }
  shared->plan.active = 1;
  shared->result = call_under(order->condition, order->operation, order->a, order->b);
  shared->plan.active = 0;
  if (is_stepped(order)) raise(SIGSTOP);
  check_result(order, shared->result);
  if (*order->condition == '\0') shared->again = order->operation->call(order->a, order->b);
  CloseOlhLog();
  compare_states();
  _exit(0);
}

static FILE* answers;
static pid_t running;
static volatile sig_atomic_t timed_out;
static void end_running(int number) {
  (void)number;
  timed_out = 1;
  kill(running, SIGKILL);
}
static void limit_time(int seconds) {
  const struct itimerval at_end = {{0, 100000}, {seconds, 0}};
  const struct itimerval none = {{0, 0}, {0, 0}};
  signal(SIGALRM, end_running);
  setitimer(ITIMER_REAL, seconds == 0 ? &none : &at_end, NULL);
}

/* Waits until what the case has started has ended too: viewers, and whoever watches over them. */
static void wait_for_the_rest(void) {
  int tries;
  for (tries = 0; tries < 5000; ++tries) {
    const pid_t ended = waitpid(-1, NULL, WNOHANG);
    if (ended < 0) return;
    if (ended == 0) usleep(1000);
  }
  found("hang a process that the case has started");
}

static void watch(const struct order* order) {
  long calls = 0;
  int status = -1;
  timed_out = 0;
  running = fork();
  if (running == 0) {
    signal(SIGALRM, SIG_DFL);
    run_case(order);
  }
  limit_time(TIME_LIMIT);
  if (is_stepped(order)) calls = step(running, order->at, order->error, &status);
  if (status == -1 || !is_stepped(order))
    while (waitpid(running, &status, 0) < 0 && errno == EINTR) continue;
  limit_time(0);
  if (timed_out)
    found("hang");
  else if (WIFSIGNALED(status) && !(strcmp(order->kind, "kill") == 0 && WTERMSIG(status) == SIGKILL))
    found("crash signal %d", WTERMSIG(status));
  else if (WIFEXITED(status) && WEXITSTATUS(status) != 0)
    found("crash exit %d", WEXITSTATUS(status));
  wait_for_the_rest();
  if (!is_stepped(order) && shared->plan.kind != FAULT_COUNT) calls = shared->plan.calls[shared->plan.kind];
  fprintf(answers, "%d\t%d\t%ld\t%s\n", shared->result, shared->again, calls, shared->findings);
  fflush(answers);
}

static void make_plan(const struct order* order) {
  struct fault_plan* const plan = &shared->plan;
  memset(shared, 0, sizeof *shared);
  shared->again = shared->result = -1;
  for (plan->kind = 0; plan->kind < FAULT_COUNT; ++plan->kind)
    if (strcmp(kind_names[plan->kind], order->kind) == 0) break;
  plan->at = order->at;
  plan->error = order->error;
  plan->for_good = order->for_good;
}

/* Keeps standard output for the answers: the generator has messages there. */
static void take_standard_output(void) {
  answers = fdopen(fcntl(1, F_DUPFD_CLOEXEC, DESCRIPTORS), "w");
  dup2(2, 1);
}

static int serve(int argc, char** argv) {
  struct order order = {"", 0, 0, 0, argv[3], operation_named(argv[2]), "", ""};
  char line[128];
  order.a = argc > 4 ? argv[4] : order.operation->a;
  order.b = argc > 5 ? argv[5] : order.operation->b;
  take_standard_output();
  prctl(PR_SET_CHILD_SUBREAPER, 1);
  shared = mmap(NULL, sizeof *shared, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (shared == MAP_FAILED) return 1;
  fault_plan = &shared->plan;
  while (fgets(line, sizeof line, stdin) != NULL) {
    if (sscanf(line, "%31s %ld %d %d", order.kind, &order.at, &order.error, &order.for_good) != 4) return 64;
    make_plan(&order);
    watch(&order);
  }
  return 0;
}

int main(int argc, char** argv) {
  if (argc == 2 && strcmp(argv[1], "kinds") == 0) return print_kinds(), 0;
  if (argc == 2 && strcmp(argv[1], "operations") == 0) return print_operations(), 0;
  if (argc >= 4 && strcmp(argv[1], "serve") == 0) return serve(argc, argv);
  return 64;
}
