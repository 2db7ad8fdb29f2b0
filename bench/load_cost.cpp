// Loading the library against a C++ library without code that needs the same others. Each load happens in a process of
// its own, once in a C host, where the needs are loaded too, and once in a host that has them, where it costs microseconds
// and what shows is that the library has functions to bind.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>

namespace {

// The seconds that one load takes; below 0 when it failed.
double load_in_a_host(const std::string& libraries) {
  std::FILE* const host = popen(("'" LOAD_HOST "' " + libraries).c_str(), "r");
  long nanoseconds = 0;
  const bool told = host != nullptr && std::fscanf(host, "%ld", &nanoseconds) == 1;
  return host != nullptr && pclose(host) == 0 && told ? static_cast<double>(nanoseconds) * 1e-9 : -1;
}

void load(benchmark::State& state, const std::string& libraries) {
  for (auto _ : state) {
    const double seconds = load_in_a_host(libraries);
    if (seconds < 0) return state.SkipWithError("cannot be loaded");
    state.SetIterationTime(seconds);
  }
}

constexpr char kLibrary[] = "'" OLH_LIBRARY "'";
constexpr char kFloor[] = "'" EMPTY_LIBRARY "'";
constexpr char kNeeds[] = " libstdc++.so.6 '" INIPARSER_LIBRARY "'";

void load_library(benchmark::State& state) { load(state, kLibrary); }
void load_floor(benchmark::State& state) { load(state, kFloor); }
void load_beside_needs_library(benchmark::State& state) { load(state, std::string(kLibrary) + kNeeds); }
void load_beside_needs_floor(benchmark::State& state) { load(state, std::string(kFloor) + kNeeds); }

}  // namespace

BENCHMARK(load_library)->Name("load/library")->UseManualTime();
BENCHMARK(load_floor)->Name("load/floor")->UseManualTime();
BENCHMARK(load_beside_needs_library)->Name("load, needs there/library")->UseManualTime();
BENCHMARK(load_beside_needs_floor)->Name("load, needs there/floor")->UseManualTime();
