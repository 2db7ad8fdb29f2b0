/* A host in C: loads one library in a process that has nothing loaded but the C library, and says how long that took.
   Usage: load_host LIBRARY    prints nanoseconds */
#define _POSIX_C_SOURCE 200809L

#include <dlfcn.h>
#include <stdio.h>
#include <time.h>

int main(int argc, char** argv) {
  struct timespec begin, end;
  void* library;
  if (argc != 2) return 64;
  clock_gettime(CLOCK_MONOTONIC, &begin);
  library = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
  clock_gettime(CLOCK_MONOTONIC, &end);
  if (library == NULL) {
    fprintf(stderr, "%s\n", dlerror());
    return 1;
  }
  printf("%ld\n", (end.tv_sec - begin.tv_sec) * 1000000000L + (end.tv_nsec - begin.tv_nsec));
  return 0;
}
