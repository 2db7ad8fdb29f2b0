// The test for the last of 20,000 topics, against one pass over the same table that only looks for topic lines.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

#include "olh/support.h"

namespace {

constexpr int kTopics = 20000;

std::string manual() {
  static const std::string directory = [] {
    const std::filesystem::path path = std::filesystem::temp_directory_path() / "olh-bench-topic";
    std::filesystem::create_directories(path / "QELdata");
    std::ofstream table(path / "QELdata/QELAllData.js");
    table << "QELAddBookVar(\"DocTitle\",\"Bench\");\n";
    for (int i = 0; i < kTopics; ++i)
      table << "QELAddTopic([\"topic_" << i << "\",\"page_" << i << ".htm\",\"The topic number " << i << "\"]);\n";
    return path.string();
  }();
  return directory;
}

void topic_library(benchmark::State& state) {
  const std::string start_page = "file://" + manual() + "/index.htm";
  const std::string topic = "topic_" + std::to_string(kTopics - 1);
  for (auto _ : state)
    if (FindHtmlTopic(start_page.c_str(), topic.c_str(), nullptr) == 0) return state.SkipWithError("not found");
}

void topic_floor(benchmark::State& state) {
  const std::string table = manual() + "/QELdata/QELAllData.js";
  for (auto _ : state) {
    std::FILE* file = std::fopen(table.c_str(), "r");
    char line[4096];
    int topics = 0;
    while (std::fgets(line, sizeof line, file) != nullptr) topics += std::strncmp(line, "QELAddTopic([\"", 14) == 0;
    std::fclose(file);
    benchmark::DoNotOptimize(topics);
  }
}

}  // namespace

BENCHMARK(topic_library)->Name("topic_last_of_20000/library");
BENCHMARK(topic_floor)->Name("topic_last_of_20000/floor");
