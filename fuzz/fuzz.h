// What the fuzz targets share: their one function, promises, inputs as several texts, and files in memory.
#ifndef OLH_FUZZ_FUZZ_H
#define OLH_FUZZ_FUZZ_H

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

// Each target's own: called for each input.
void try_input(const std::string& input);

// Stops the run and keeps the input when a promise is broken.
inline void expect(bool promise, const char* broken) {
  if (promise) return;
  std::fprintf(stderr, "broken promise: %s\n", broken);
  std::abort();
}

// The texts between the bytes 0x1e, "" for those that are missing; the last one has the rest.
inline std::vector<std::string> parts_of(const std::string& input, std::size_t count) {
  std::vector<std::string> parts(1);
  for (const char byte : input) {
    if (byte == 0x1e && parts.size() < count)
      parts.emplace_back();
    else
      parts.back() += byte;
  }
  parts.resize(count);
  return parts;
}

// The lines of a file as a buffer of `longest` bytes takes them, each with its line feed.
inline std::vector<std::string> pieces_in(const std::string& text, std::size_t longest) {
  std::vector<std::string> pieces;
  for (const char byte : text) {
    if (pieces.empty() || pieces.back().ends_with('\n') || pieces.back().size() == longest) pieces.emplace_back();
    pieces.back() += byte;
  }
  return pieces;
}

// A directory of this process, which goes with it; in memory where the system has such a place, so that nothing is waited for
// that reaches a disk.
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
