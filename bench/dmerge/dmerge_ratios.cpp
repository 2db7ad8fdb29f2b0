// What the document list generator costs beside plain reads of the files that it needs, and how it grows.
//
//   bench_dmerge            everything; needs about 1.5 GB below TMPDIR, which it removes again. Where that is a disk, the
//                           lists that a run writes cost the disk's file system some time too
//   bench_dmerge --cold     instead: with the system's file cache emptied before each run (as root)
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <exception>
#include <fstream>
#include <stdexcept>

#include "made_tree.h"
#include "timed_program.h"

namespace fs = std::filesystem;

namespace {

constexpr int kTurns = 15;
constexpr int kColdTurns = 5;
constexpr int kGrowthTurns = 5;
constexpr std::size_t kPdfBytes = 256 * 1024;
constexpr TreeSize kMeasured = {3000, 20, kPdfBytes};

class TemporaryDirectory {
 public:
  TemporaryDirectory() {
    std::string pattern = (fs::temp_directory_path() / "bench-dmerge-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary directory");
    path = pattern;
  }
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
  ~TemporaryDirectory() {
    std::error_code ignored;
    fs::remove_all(path, ignored);
  }
  fs::path path;
};

void print(const char* what, const Compared& both, double limit) {
  std::printf("%-36s %8.1f ms  floor %8.1f ms  ratio %.2f (at most %.2f)\n", what, both.seconds * 1e3,
              both.floor_seconds * 1e3, both.ratio(), limit);
  std::fflush(stdout);
}

void measure_ratios(const fs::path& directory) {
  const MadeTree tree = make_tree(directory, kMeasured);
  sync();  // the disk is not to be busy with the tree while it is measured
  const Command run = {RUN_PROGRAM, tree.root};
  const Command floor = {FLOOR_PROGRAM, tree.needed_files};
  print("whole run, no lists yet", compare(run, floor, kTurns, [&] { remove_lists(tree); }), 1.35);
  print("whole run, a library is new or gone", compare(run, floor, kTurns, [&] { change_tree(tree); }), 1.35);
  print("whole run, all lists true already", compare(run, floor, kTurns), 1.35);
  const Command scan = {SCAN_PROGRAM, tree.scanned_files, std::to_string(tree.scanned)};
  print("title scan", compare(scan, {FLOOR_PROGRAM, tree.scanned_files}, kTurns), 1.30);
}

void measure_false_starts(const fs::path& directory) {
  constexpr std::size_t kFiles = 400;
  const char* const texts[] = {
      "p",          ":",           "pdf:",         "pdf:Titl",          "pdf:Title",
      "pdf:Title=", "<pdf:Title<", "pdf:Title=''", "<pdf:Title></pdf:", "pdf:Titl pdf:Title=\n"};
  for (const char* text : texts) {
    const fs::path place = directory / "repeats";
    const fs::path list = make_repeats(place, text, kFiles, kPdfBytes);
    std::string what = std::string("title scan, all \"") + text + "\"";
    if (what.find('\n') != std::string::npos) what.replace(what.find('\n'), 1, "\\n");
    print(what.c_str(), compare({SCAN_PROGRAM, list, "0"}, {FLOOR_PROGRAM, list}, kTurns), 6);
    fs::remove_all(place);
  }
}

// Each size beside the one before; what the plain reads grow by is the file system's share.
void measure_growth(const fs::path& directory) {
  Compared before{0, 0};
  for (const std::size_t documents : {1000, 10000, 100000}) {
    const fs::path place = directory / "growth";
    fs::create_directories(place);
    const MadeTree tree = make_tree(place, {documents, 200, 256});
    sync();
    const Command run = {RUN_PROGRAM, tree.root};
    const Compared both = compare(run, {FLOOR_PROGRAM, tree.needed_files}, kGrowthTurns);
    std::printf("%7zu libraries, %7zu PDFs %14.1f ms  %5.1f us a document  %6ld KiB", documents, documents,
                both.seconds * 1e3, both.seconds * 1e6 / (2.0 * static_cast<double>(documents)),
                run_program(run).peak_kibibytes);
    if (before.seconds > 0)
      std::printf("  x%.1f (plain reads x%.1f)", both.seconds / before.seconds,
                  both.floor_seconds / before.floor_seconds);
    std::printf("\n");
    std::fflush(stdout);
    before = both;
    fs::remove_all(place);
  }
}

void forget_files() {
  sync();
  std::ofstream("/proc/sys/vm/drop_caches") << "3\n";
}

void measure_cold(const fs::path& directory) {
  const MadeTree tree = make_tree(directory, kMeasured);
  Compared best{1e9, 1e9};
  for (int turn = 0; turn < kColdTurns; ++turn) {
    forget_files();
    best.floor_seconds = std::min(best.floor_seconds, run_program({FLOOR_PROGRAM, tree.needed_files}).seconds);
    forget_files();
    best.seconds = std::min(best.seconds, run_program({RUN_PROGRAM, tree.root}).seconds);
  }
  std::printf("%-36s %8.1f ms  floor %8.1f ms  ratio %.2f\n", "whole run, cold", best.seconds * 1e3,
              best.floor_seconds * 1e3, best.ratio());
}

void measure(bool cold) {
  const TemporaryDirectory directory;
  if (cold) return measure_cold(directory.path);
  measure_ratios(directory.path / "tree");
  fs::remove_all(directory.path / "tree");
  measure_false_starts(directory.path);
  measure_growth(directory.path);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    measure(argc > 1 && std::strcmp(argv[1], "--cold") == 0);
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "bench_dmerge: %s\n", error.what());
    return 1;
  }
}
