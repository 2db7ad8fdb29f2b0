// Prints what each operation costs as a ratio to its floor, both measured in the same run.
//
// Benchmarks come in pairs "NAME/library" and "NAME/floor", repeated in random order, so that both meet the same noise.
#ifndef OLH_BENCH_RATIO_REPORTER_H
#define OLH_BENCH_RATIO_REPORTER_H

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

class RatioReporter : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context& context) override;
  void ReportRuns(const std::vector<Run>& runs) override;
  void Finalize() override;

 private:
  std::map<std::string, std::vector<double>> seconds_;  // by benchmark name
};

#endif
