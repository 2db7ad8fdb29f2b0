// A program run for its time.
#ifndef OLH_BENCH_DMERGE_TIMED_PROGRAM_H
#define OLH_BENCH_DMERGE_TIMED_PROGRAM_H

#include <functional>
#include <string>
#include <vector>

using Command = std::vector<std::string>;

struct Timed {
  double seconds;       // from its start to its end
  long peak_kibibytes;  // of memory
};

// Throws when the program cannot be run or fails.
Timed run_program(const Command& command);

// Both in turn, so that they meet the same noise; the best time of each counts. Before the first turn each runs once
// unmeasured. What is to happen before each run of the first is not measured.
struct Compared {
  double seconds;
  double floor_seconds;
  double ratio() const { return seconds / floor_seconds; }
};
Compared compare(const Command& command, const Command& floor, int turns, const std::function<void()>& before = {});

#endif
