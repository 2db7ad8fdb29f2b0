// A lookup that finds nothing in 1,000 directory roots, against the bare access calls on the same candidates.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "olh/support.h"

namespace {

constexpr int kRoots = 1000;

// The roots are the directories 0 to 999 of a scratch directory that the process works in from here on.
const std::string& roots() {
  static const std::string list = [] {
    const std::filesystem::path scratch = std::filesystem::temp_directory_path() / "olh-bench-lookup";
    std::string names;
    for (int i = 0; i < kRoots; ++i) {
      std::filesystem::create_directories(scratch / std::to_string(i) / "pdfdocs");
      names += std::to_string(i) + ":";
    }
    std::filesystem::current_path(scratch);
    return names;
  }();
  return list;
}

void lookup_library(benchmark::State& state) {
  SetOlhDocPath(roots().c_str());
  char out[OLH_BUFFER_SIZE];
  char viewer[OLH_BUFFER_SIZE];
  for (auto _ : state) benchmark::DoNotOptimize(FindHtmlDoc(out, "guide", viewer));
}

void lookup_floor(benchmark::State& state) {
  roots();
  std::vector<std::string> candidates;
  for (int i = 0; i < kRoots; ++i)
    for (const char* rest : {"/htmldocs/guide/index.htm", "/htmldocs/guide/guide.htm", "/tomedecks/guide/index.html",
                             "/pdfdocs/guide.pdf", "/system_admin_docs/guide.pdf", ""})
      candidates.push_back(*rest != '\0' ? std::to_string(i) + rest : "guide.pdf");
  candidates.emplace_back("guide");
  for (auto _ : state)
    for (const std::string& candidate : candidates) benchmark::DoNotOptimize(access(candidate.c_str(), R_OK));
}

}  // namespace

BENCHMARK(lookup_library)->Name("lookup_1000_roots/library");
BENCHMARK(lookup_floor)->Name("lookup_1000_roots/floor");
