/* A host in C: loads one library, and says how long that took. Before that it has nothing loaded but the C library and
   the libraries named behind the first.
   Usage: load_host LIBRARY [LOADED_BEFORE...]    prints nanoseconds */
#define _POSIX_C_SOURCE 200809L

#include <dlfcn.h>
#include <stdio.h>
#include <time.h>

static void* load(const char* path) {
  void* library = dlopen(path, RTLD_NOW | RTLD_LOCAL);
  if (library == NULL) fprintf(stderr, "%s\n", dlerror());
  return library;
}

int main(int argc, char** argv) {
  struct timespec begin, end;
  int i;
  if (argc < 2) return 64;
  for (i = 2; i < argc; ++i)
    if (load(argv[i]) == NULL) return 1;
  clock_gettime(CLOCK_MONOTONIC, &begin);
  if (load(argv[1]) == NULL) return 1;
  clock_gettime(CLOCK_MONOTONIC, &end);
  printf("%ld\n", (end.tv_sec - begin.tv_sec) * 1000000000L + (end.tv_nsec - begin.tv_nsec));
  return 0;
}
