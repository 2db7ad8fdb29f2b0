// A fuzz input as several texts.
#ifndef OLH_FUZZ_PARTS_H
#define OLH_FUZZ_PARTS_H

#include <cstdint>
#include <string>
#include <vector>

// The texts between the bytes 0x1e, "" for those that are missing; the last one has the rest.
inline std::vector<std::string> parts_of(const std::uint8_t* data, std::size_t size, std::size_t count) {
  std::vector<std::string> parts(1);
  for (std::size_t i = 0; i < size; ++i) {
    if (data[i] == 0x1e && parts.size() < count)
      parts.emplace_back();
    else
      parts.back() += static_cast<char>(data[i]);
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

#endif
