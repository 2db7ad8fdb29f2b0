// The title scan alone:  bench_dmerge_scan LIST EXPECTED
// LIST names one PDF a line; EXPECTED is how many of them have a title, so that a scan that finds nothing fails.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "title_scan.h"

int main(int argc, char** argv) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> list(argc > 2 ? std::fopen(argv[1], "r") : nullptr,
                                                             &std::fclose);
  if (!list) return 2;
  static char path[4096];
  long titles = 0;
  olh::PieceBlocks blocks;
  while (std::fgets(path, sizeof path, list.get()) != nullptr) {
    path[std::strcspn(path, "\n")] = '\0';
    blocks.start(olh::open_regular_file(path));
    if (!olh::pdf_title(blocks).empty()) ++titles;
  }
  return titles == std::atol(argv[2]) ? 0 : 1;
}
