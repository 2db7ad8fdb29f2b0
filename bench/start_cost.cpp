// The processor time that the start of a viewer takes, in a small host and in one that holds a gigabyte, against a plain
// posix_spawn of the same program. A start by fork would copy the page tables of the host: it would cost the more, the
// larger the host is.
#include <benchmark/benchmark.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <array>
#include <cstddef>
#include <string>

#include "detached_start.h"

namespace {

// Memory of which every page has been written to, in small pages, as in a host that has grown.
class Ballast {
 public:
  explicit Ballast(std::size_t bytes) : bytes_(bytes) {
    if (bytes_ == 0) return;
    memory_ = mmap(nullptr, bytes_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory_ == MAP_FAILED) return;
    madvise(memory_, bytes_, MADV_NOHUGEPAGE);
    for (std::size_t at = 0; at < bytes_; at += 4096) static_cast<char*>(memory_)[at] = 1;
  }
  ~Ballast() {
    if (there() && bytes_ != 0) munmap(memory_, bytes_);
  }
  Ballast(const Ballast&) = delete;
  Ballast& operator=(const Ballast&) = delete;
  bool there() const { return memory_ != MAP_FAILED; }

 private:
  std::size_t bytes_;
  void* memory_ = nullptr;
};

double seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

// Of this process and of the children that it has waited for.
double processor_seconds() {
  double sum = 0;
  for (const auto who : {RUSAGE_SELF, RUSAGE_CHILDREN}) {
    rusage usage = {};
    getrusage(who, &usage);
    sum += seconds(usage.ru_utime) + seconds(usage.ru_stime);
  }
  return sum;
}

bool start_by_library() {
  static const std::array<std::string, 1> kWords = {"/bin/true"};
  return olh::start_detached(kWords).outcome == olh::StartOutcome::kStarted;
}

bool start_by_spawn() {
  char program[] = "/bin/true";
  char* const words[] = {program, nullptr};
  char* const environment[] = {nullptr};
  pid_t child = 0;
  int status = 0;
  return posix_spawn(&child, program, nullptr, nullptr, words, environment) == 0 &&
         waitpid(child, &status, 0) == child && status == 0;
}

// One start for each repetition: the library watches what it has started for two seconds.
void start(benchmark::State& state, std::size_t megabytes, bool (*start_one)()) {
  const Ballast ballast(megabytes << 20);
  if (!ballast.there()) return state.SkipWithError("no memory");
  for (auto _ : state) {
    const double before = processor_seconds();
    if (!start_one()) return state.SkipWithError("not started");
    state.SetIterationTime(processor_seconds() - before);
  }
}

}  // namespace

BENCHMARK_CAPTURE(start, a, 0, start_by_library)->Name("start, CPU/library")->UseManualTime()->Iterations(1);
BENCHMARK_CAPTURE(start, b, 0, start_by_spawn)->Name("start, CPU/floor")->UseManualTime()->Iterations(1);
BENCHMARK_CAPTURE(start, c, 1024, start_by_library)
    ->Name("start, CPU, 1 GiB host/library")
    ->UseManualTime()
    ->Iterations(1);
BENCHMARK_CAPTURE(start, d, 1024, start_by_spawn)
    ->Name("start, CPU, 1 GiB host/floor")
    ->UseManualTime()
    ->Iterations(1);
