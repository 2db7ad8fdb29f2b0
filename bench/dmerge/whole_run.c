/* One run of the generator, as any host makes it:  bench_dmerge_run ROOT */
#include <olh/dmerge.h>
#include <stddef.h>

int main(int argc, char** argv) { return argc > 1 ? dmerge(argv[1], NULL) : 2; }
