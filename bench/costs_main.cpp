// What loading, looking up, probing, starting a viewer and testing a topic cost against their floors. Usage: bench_costs [--benchmark_...]
#include <benchmark/benchmark.h>

#include <vector>

#include "ratio_reporter.h"

int main(int argc, char** argv) {
  std::vector<char*> arguments(argv, argv + argc);
  char repetitions[] = "--benchmark_repetitions=15";
  char interleave[] = "--benchmark_enable_random_interleaving=true";
  char min_time[] = "--benchmark_min_time=0.05";
  arguments.insert(arguments.begin() + 1, {repetitions, interleave, min_time});
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  return 0;
}
