// Loading the library with all that it needs into a C host, against a C++ library without code that needs the same
// others. Each load happens in a process of its own: in this one the needs are loaded already.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>

namespace {

// The seconds that one load takes; below 0 when it failed.
double load_in_a_host(const std::string& library) {
  std::FILE* const host = popen(("'" LOAD_HOST "' '" + library + "'").c_str(), "r");
  long nanoseconds = 0;
  const bool told = host != nullptr && std::fscanf(host, "%ld", &nanoseconds) == 1;
  return host != nullptr && pclose(host) == 0 && told ? static_cast<double>(nanoseconds) * 1e-9 : -1;
}

void load(benchmark::State& state, const char* library) {
  for (auto _ : state) {
    const double seconds = load_in_a_host(library);
    if (seconds < 0) return state.SkipWithError("cannot be loaded");
    state.SetIterationTime(seconds);
  }
}

void load_library(benchmark::State& state) { load(state, OLH_LIBRARY); }
void load_floor(benchmark::State& state) { load(state, EMPTY_LIBRARY); }

}  // namespace

BENCHMARK(load_library)->Name("load/library")->UseManualTime();
BENCHMARK(load_floor)->Name("load/floor")->UseManualTime();
