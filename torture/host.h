/* The host that everything is done to: its operations, and what may be true of it while it does one. */
#ifndef OLH_TORTURE_HOST_H
#define OLH_TORTURE_HOST_H

#include <stddef.h>
#include <sys/types.h>

struct operation {
  const char* name;
  int (*call)(const char* a, const char* b);
  const char* documented; /* the results that olh.h names, a digit each */
  const char* a;          /* what it is called with, unless told otherwise */
  const char* b;
};
const struct operation* operation_named(const char* name); /* ends the process when there is none */
void print_operations(void);

/* Whether what lies around the buffer that operations fill is untouched, and the text in it ends. */
int buffer_is_whole(void);
const char* buffer_text(void);

/* What a host can have done to itself: "fds=7", "closed=5", "eintr", ... Done before its state is looked at. */
void impose(const char* condition);
/* Runs an operation as the condition wants it: on this thread, on one with a small stack, among threads that spawn. */
int call_under(const char* condition, const struct operation* operation, const char* a, const char* b);

/* Says what is wrong: "KIND what", where KIND is a column of the table. */
void found(const char* format, ...) __attribute__((format(printf, 1, 2)));

/* Watches a host that has stopped itself before an operation, with its children, and does harm at their N-th system call:
   kills who makes it (error 0), or lets it fail. Returns how many calls there were; *status is then the host's end, or -1 when
   it has stopped itself again and lives. */
long step(pid_t host, long at, int error, int* status);

#endif
