/* Injected faults: the C library's calls as the whole process sees them (the library, the INI reader, the C++ library and
   the C library's own allocations), counted by kind, with the N-th of one kind failing.

   The plan lies in memory that children share, so that their calls are numbered too; a program that a child becomes
   knows nothing of it. While no plan is active every call does what it always does. Calls that the library makes of the
   system itself, without the C library, are for steps.c. */
#ifndef OLH_TORTURE_FAULTS_H
#define OLH_TORTURE_FAULTS_H

/* Names and the errors that such a call may plausibly give. SHORT: it moves one byte only. */
#define SHORT 1000
/* clang-format off */
#define FAULT_KINDS(X) \
  X(memory, ENOMEM) X(malloc, ENOMEM) X(calloc, ENOMEM) X(realloc, ENOMEM) X(strdup, ENOMEM) X(strndup, ENOMEM) \
  X(open, ENOENT, EACCES, EMFILE, EINTR, EIO, ENOSPC) X(openat, ENOENT, EACCES, EMFILE, EINTR) \
  X(read, EIO, EINTR, EAGAIN, SHORT) X(write, EIO, ENOSPC, EINTR, EPIPE, SHORT) X(close, EIO, EINTR) \
  X(fstat, EIO, EOVERFLOW) X(stat, EACCES, EIO) X(lstat, EACCES, EIO) X(access, EACCES, EIO) \
  X(readlink, EIO, EACCES) X(rename, EACCES, EIO, ENOSPC) X(unlink, EACCES, EIO) X(fsync, EIO, ENOSPC, EINTR) \
  X(fdopen, ENOMEM, EMFILE) X(fopen, EACCES, EMFILE, ENOMEM) X(fclose, EIO, ENOSPC) X(fflush, EIO, ENOSPC) \
  X(fwrite, EIO, ENOSPC) X(fputs, EIO) X(fgets, EIO) X(__getdelim, EIO, ENOMEM) X(fcntl, EMFILE, EINVAL) \
  X(flock, EWOULDBLOCK, ENOLCK, EINTR) X(fchmod, EPERM) X(fchown, EPERM) X(fdopendir, ENOMEM, EMFILE) X(readdir, EIO) \
  X(closedir, EIO) X(getcwd, ENOENT, ERANGE) X(_Fork, EAGAIN, ENOMEM) X(fork, EAGAIN, ENOMEM) X(clone, EAGAIN, ENOMEM) \
  X(posix_spawn, EAGAIN, ENOENT) X(waitpid, EINTR) X(pipe2, EMFILE, ENFILE) X(popen, EMFILE, EAGAIN) \
  X(pclose, ECHILD) X(system, EAGAIN) X(execv, ENOENT, EACCES, ENOEXEC, E2BIG) X(syscall, ENOSYS, EINVAL) \
  X(socket, EMFILE, EAFNOSUPPORT) X(connect, ECONNREFUSED, EINTR, ETIMEDOUT, EINPROGRESS) X(bind, EADDRINUSE) \
  X(send, EPIPE, ECONNRESET, EINTR, EAGAIN) X(recv, ECONNRESET, EINTR, EAGAIN, SHORT) X(poll, EINTR, ENOMEM) \
  X(getsockopt, EINVAL) X(gethostbyname_r, EAGAIN, ERANGE)
/* clang-format on */

#define FAULT_NAME(name, ...) FAULT_##name,
enum fault_kind { FAULT_KINDS(FAULT_NAME) FAULT_COUNT };
#undef FAULT_NAME

struct fault_plan {
  int active;
  int kind;     /* FAULT_COUNT: only count */
  long at;      /* the first call that fails, from 1 */
  int for_good; /* also every later one */
  int error;
  long calls[FAULT_COUNT];
};

extern struct fault_plan* fault_plan; /* null: no faults */

#endif
