// Files for a fuzz target, in memory where the system has such a place: nothing is waited for that reaches a disk.
#ifndef OLH_FUZZ_SCRATCH_H
#define OLH_FUZZ_SCRATCH_H

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "expect.h"

// The directory of this process, which goes with it.
inline const std::string& scratch() {
  static const std::string directory = [] {
    std::string pattern = access("/dev/shm", W_OK) == 0 ? "/dev/shm/olh-fuzz-XXXXXX" : "/tmp/olh-fuzz-XXXXXX";
    expect(mkdtemp(pattern.data()) != nullptr, "a scratch directory");
    return pattern;
  }();
  static const int registered = std::atexit([] { std::filesystem::remove_all(scratch()); });
  expect(registered == 0, "the scratch directory goes");
  return directory;
}

inline void write_file(const std::string& path, std::string_view text) {
  std::ofstream(path, std::ios::binary).write(text.data(), static_cast<std::streamsize>(text.size()));
}

inline std::string read_file(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

#endif
