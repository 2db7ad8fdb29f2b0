#include "ratio_reporter.h"

#include <algorithm>
#include <cstdio>

namespace {

double median(std::vector<double> values) {
  if (values.empty()) return 0;
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

// Why a run failed, "" for one that did not. Google Benchmark 1.8 gave the member its new name.
template <class Run>
const std::string& failure_of(const Run& run) {
  if constexpr (requires { run.skip_message; })
    return run.skip_message;
  else
    return run.error_message;
}

}  // namespace

bool RatioReporter::ReportContext(const Context&) { return true; }

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    const std::string& failure = failure_of(run);
    if (!failure.empty()) std::fprintf(stderr, "%s: %s\n", run.benchmark_name().c_str(), failure.c_str());
    if (!failure.empty() || run.run_type != Run::RT_Iteration) continue;
    const double per_iteration = run.real_accumulated_time / static_cast<double>(run.iterations);
    seconds_[run.run_name.function_name].push_back(per_iteration);
  }
}

void RatioReporter::Finalize() {
  std::printf("%-30s %12s %12s %7s\n", "operation", "library us", "floor us", "ratio");
  for (const auto& [name, values] : seconds_) {
    const std::size_t slash = name.rfind("/library");
    if (slash == std::string::npos) continue;
    const double library = median(values);
    const double floor = median(seconds_[name.substr(0, slash) + "/floor"]);
    std::printf("%-30s %12.2f %12.2f %7.2f\n", name.substr(0, slash).c_str(), library * 1e6, floor * 1e6,
                floor > 0 ? library / floor : 0.0);
  }
}
