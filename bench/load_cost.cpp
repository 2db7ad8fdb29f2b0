// Loading and unloading the library, against a C++ library without code that needs the same others.
#include <benchmark/benchmark.h>
#include <dlfcn.h>

namespace {

void load(benchmark::State& state, const char* path) {
  for (auto _ : state) {
    void* library = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) return state.SkipWithError(dlerror());
    dlclose(library);
  }
}

void load_library(benchmark::State& state) { load(state, OLH_LIBRARY); }
void load_floor(benchmark::State& state) { load(state, EMPTY_LIBRARY); }

}  // namespace

BENCHMARK(load_library)->Name("load/library");
BENCHMARK(load_floor)->Name("load/floor");
