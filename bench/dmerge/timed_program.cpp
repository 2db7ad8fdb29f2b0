#include "timed_program.h"

#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <stdexcept>

extern char** environ;

Timed run_program(const Command& command) {
  std::vector<char*> arguments;
  for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  const auto begin = std::chrono::steady_clock::now();
  pid_t child = 0;
  int status = 0;
  struct rusage usage = {};
  if (posix_spawn(&child, arguments[0], nullptr, nullptr, arguments.data(), environ) != 0 ||
      wait4(child, &status, 0, &usage) != child || !WIFEXITED(status) || WEXITSTATUS(status) != 0)
    throw std::runtime_error(command[0] + " " + command[1] + " failed");
  const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
  return {took.count(), usage.ru_maxrss};
}

Compared compare(const Command& command, const Command& floor, int turns, const std::function<void()>& before) {
  run_program(floor);
  run_program(command);
  Compared best{1e9, 1e9};
  for (int turn = 0; turn < turns; ++turn) {
    best.floor_seconds = std::min(best.floor_seconds, run_program(floor).seconds);
    if (before) before();
    best.seconds = std::min(best.seconds, run_program(command).seconds);
  }
  return best;
}
