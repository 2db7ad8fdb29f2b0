#define _GNU_SOURCE
#include "faults.h"

#include <dirent.h>
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <netdb.h>
#include <poll.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

struct fault_plan* fault_plan;

/* The error that this call of a kind has to give; 0: none. */
static int fault(int kind) {
  struct fault_plan* plan = fault_plan;
  long number;
  if (plan == NULL || !plan->active) return 0;
  number = __atomic_add_fetch(&plan->calls[kind], 1, __ATOMIC_RELAXED);
  if (kind != plan->kind || number < plan->at || (number > plan->at && !plan->for_good)) return 0;
  return plan->error;
}

/* The C library's resolver keeps a lock for ever when its first allocation fails; that is not looked for here. */
static __thread int in_resolver;

/* Memory has a kind for each function, and one for all. */
static int no_memory(int kind) {
  const int one = in_resolver ? 0 : fault(kind);
  const int all = in_resolver ? 0 : fault(FAULT_memory);
  if (one == 0 && all == 0) return 0;
  errno = ENOMEM;
  return 1;
}

/* The next definition is the C library's own. */
#define REAL(result, name, types) \
  static result(*real) types;     \
  if (real == NULL) *(void**)(&real) = dlsym(RTLD_NEXT, #name)

#define FAILS(result, failure, name, types, arguments) \
  result name types {                                  \
    const int error = fault(FAULT_##name);             \
    REAL(result, name, types);                         \
    if (error == 0) return real arguments;             \
    errno = error;                                     \
    return failure;                                    \
  }

/* What gives something back does so even when it fails. */
#define FAILS_AFTER(result, failure, name, types, arguments) \
  result name types {                                        \
    const int error = fault(FAULT_##name);                   \
    result outcome;                                          \
    REAL(result, name, types);                               \
    outcome = real arguments;                                \
    if (error == 0) return outcome;                          \
    errno = error;                                           \
    return failure;                                          \
  }

/* What a stream cannot do, it remembers. */
#define FAILS_IN_STREAM(result, failure, name, types, arguments) \
  result name types {                                            \
    const int error = fault(FAULT_##name);                       \
    REAL(result, name, types);                                   \
    if (error == 0) return real arguments;                       \
    stream->_flags |= _IO_ERR_SEEN;                              \
    errno = error;                                               \
    return failure;                                              \
  }

#define MOVES(result, name, types, arguments, size)          \
  result name types {                                        \
    const int error = fault(FAULT_##name);                   \
    REAL(result, name, types);                               \
    if (error == SHORT && size > 1) size = 1;                \
    if (error == 0 || error == SHORT) return real arguments; \
    errno = error;                                           \
    return -1;                                               \
  }

/* ---- memory: not through dlsym, which allocates ------------------------------------------------------------------ */

extern void* __libc_malloc(size_t size);
extern void* __libc_calloc(size_t count, size_t size);
extern void* __libc_realloc(void* block, size_t size);

void* malloc(size_t size) { return no_memory(FAULT_malloc) ? NULL : __libc_malloc(size); }
void* calloc(size_t count, size_t size) { return no_memory(FAULT_calloc) ? NULL : __libc_calloc(count, size); }
void* realloc(void* block, size_t size) { return no_memory(FAULT_realloc) ? NULL : __libc_realloc(block, size); }
char* strndup(const char* text, size_t limit) {
  const size_t size = strnlen(text, limit);
  char* copy = no_memory(FAULT_strndup) ? NULL : __libc_malloc(size + 1);
  if (copy == NULL) return NULL;
  copy[size] = '\0';
  return memcpy(copy, text, size);
}
char* strdup(const char* text) {
  const size_t size = strlen(text) + 1;
  char* copy = no_memory(FAULT_strdup) ? NULL : __libc_malloc(size);
  return copy == NULL ? NULL : memcpy(copy, text, size);
}

/* ---- files ------------------------------------------------------------------------------------------------------- */

int open(const char* name, int flags, ...) {
  const int error = fault(FAULT_open);
  va_list more;
  mode_t mode;
  REAL(int, open, (const char*, int, ...));
  va_start(more, flags);
  mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(more, mode_t) : 0;
  va_end(more);
  if (error == 0) return real(name, flags, mode);
  errno = error;
  return -1;
}
int openat(int at, const char* name, int flags, ...) {
  const int error = fault(FAULT_openat);
  va_list more;
  mode_t mode;
  REAL(int, openat, (int, const char*, int, ...));
  va_start(more, flags);
  mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(more, mode_t) : 0;
  va_end(more);
  if (error == 0) return real(at, name, flags, mode);
  errno = error;
  return -1;
}
int fcntl(int fd, int command, ...) {
  const int error = fault(FAULT_fcntl);
  va_list more;
  long argument;
  REAL(int, fcntl, (int, int, ...));
  va_start(more, command);
  argument = va_arg(more, long);
  va_end(more);
  if (error == 0) return real(fd, command, argument);
  errno = error;
  return -1;
}
MOVES(ssize_t, read, (int fd, void* to, size_t size), (fd, to, size), size)
MOVES(ssize_t, write, (int fd, const void* from, size_t size), (fd, from, size), size)
FAILS_AFTER(int, -1, close, (int fd), (fd))
FAILS(int, -1, fstat, (int fd, struct stat* status), (fd, status))
FAILS(int, -1, stat, (const char* name, struct stat* status), (name, status))
FAILS(int, -1, lstat, (const char* name, struct stat* status), (name, status))
FAILS(int, -1, access, (const char* name, int mode), (name, mode))
FAILS(ssize_t, -1, readlink, (const char* name, char* to, size_t size), (name, to, size))
FAILS(int, -1, rename, (const char* from, const char* to), (from, to))
FAILS(int, -1, unlink, (const char* name), (name))
FAILS(int, -1, fsync, (int fd), (fd))
FAILS(int, -1, flock, (int fd, int what), (fd, what))
FAILS(int, -1, fchmod, (int fd, mode_t mode), (fd, mode))
FAILS(int, -1, fchown, (int fd, uid_t user, gid_t group), (fd, user, group))
FAILS(char*, NULL, getcwd, (char* to, size_t size), (to, size))
FAILS(FILE*, NULL, fdopen, (int fd, const char* mode), (fd, mode))
FAILS(FILE*, NULL, fopen, (const char* name, const char* mode), (name, mode))
FAILS_AFTER(int, EOF, fclose, (FILE * stream), (stream))
FAILS_IN_STREAM(int, EOF, fflush, (FILE * stream), (stream))
FAILS_IN_STREAM(int, EOF, fputs, (const char* text, FILE* stream), (text, stream))
FAILS_IN_STREAM(char*, NULL, fgets, (char* to, int size, FILE* stream), (to, size, stream))
FAILS_IN_STREAM(size_t, 0, fwrite, (const void* from, size_t size, size_t count, FILE* stream),
                (from, size, count, stream))
FAILS_IN_STREAM(ssize_t, -1, __getdelim, (char** line, size_t* size, int end, FILE* stream),
                (line, size, end, stream))
FAILS(DIR*, NULL, fdopendir, (int fd), (fd))
FAILS(struct dirent*, NULL, readdir, (DIR * directory), (directory))
FAILS_AFTER(int, -1, closedir, (DIR * directory), (directory))

/* ---- processes --------------------------------------------------------------------------------------------------- */

FAILS(pid_t, -1, _Fork, (void), ())
FAILS(pid_t, -1, fork, (void), ())
FAILS(int, -1, clone, (int (*function)(void*), void* stack, int flags, void* argument, void* a, void* b, void* c),
      (function, stack, flags, argument, a, b, c))
FAILS(pid_t, -1, waitpid, (pid_t child, int* status, int options), (child, status, options))
FAILS(int, -1, pipe2, (int ends[2], int flags), (ends, flags))
FAILS(FILE*, NULL, popen, (const char* command, const char* mode), (command, mode))
FAILS_AFTER(int, -1, pclose, (FILE * stream), (stream))
FAILS(int, -1, system, (const char* command), (command))
FAILS(int, -1, execv, (const char* program, char* const arguments[]), (program, arguments))
int posix_spawn(pid_t* child, const char* program, const void* actions, const void* attributes,
                char* const arguments[], char* const environment[]) {
  const int error = fault(FAULT_posix_spawn);
  REAL(int, posix_spawn, (pid_t*, const char*, const void*, const void*, char* const[], char* const[]));
  return error != 0 ? error : real(child, program, actions, attributes, arguments, environment);
}
long syscall(long number, ...) {
  const int error = fault(FAULT_syscall);
  va_list more;
  long a[6];
  int i;
  REAL(long, syscall, (long, ...));
  va_start(more, number);
  for (i = 0; i < 6; ++i) a[i] = va_arg(more, long);
  va_end(more);
  if (error == 0) return real(number, a[0], a[1], a[2], a[3], a[4], a[5]);
  errno = error;
  return -1;
}
/* ---- sockets ----------------------------------------------------------------------------------------------------- */

FAILS(int, -1, socket, (int domain, int type, int protocol), (domain, type, protocol))
FAILS(int, -1, connect, (int fd, __CONST_SOCKADDR_ARG to, socklen_t size), (fd, to, size))
FAILS(int, -1, bind, (int fd, __CONST_SOCKADDR_ARG to, socklen_t size), (fd, to, size))
MOVES(ssize_t, send, (int fd, const void* from, size_t size, int flags), (fd, from, size, flags), size)
MOVES(ssize_t, recv, (int fd, void* to, size_t size, int flags), (fd, to, size, flags), size)
FAILS(int, -1, poll, (struct pollfd * set, nfds_t count, int milliseconds), (set, count, milliseconds))
FAILS(int, -1, getsockopt, (int fd, int level, int name, void* value, socklen_t* size),
      (fd, level, name, value, size))
int gethostbyname_r(const char* name, struct hostent* entry, char* to, size_t size, struct hostent** result,
                    int* why) {
  int error = fault(FAULT_gethostbyname_r);
  REAL(int, gethostbyname_r, (const char*, struct hostent*, char*, size_t, struct hostent**, int*));
  if (error == 0) {
    in_resolver = 1;
    error = real(name, entry, to, size, result, why);
    in_resolver = 0;
    return error;
  }
  *result = NULL;
  *why = error == ERANGE ? NETDB_INTERNAL : TRY_AGAIN;
  return error;
}
