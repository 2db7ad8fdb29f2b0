/*
 * The floor: opens and reads files in blocks of 256 KiB, and does nothing else.
 *
 *   bench_dmerge_floor LIST     LIST names one file a line
 */
#include <fcntl.h>
#include <stdio.h>
#include <string.h>
#include <unistd.h>

#define BLOCK (256 * 1024)

static char block[BLOCK];

static int read_whole(const char* path) {
  const int fd = open(path, O_RDONLY);
  ssize_t got = 0;
  if (fd < 0) return 1;
  do got = read(fd, block, BLOCK);
  while (got > 0);
  close(fd);
  return got < 0;
}

int main(int argc, char** argv) {
  static char path[4096];
  FILE* list = argc > 1 ? fopen(argv[1], "r") : NULL;
  int failures = 0;
  if (list == NULL) return 2;
  while (fgets(path, sizeof path, list) != NULL) {
    path[strcspn(path, "\n")] = '\0';
    failures += read_whole(path);
  }
  fclose(list);
  return failures != 0;
}
