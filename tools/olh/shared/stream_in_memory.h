// What is written to a standard stream, kept in memory instead.
//
// Knows    that a stream and its descriptor both have to be turned, and given back as they were.
// Not      what is written, nor by whom.
// Owns     the descriptor while it lives.
// For      debug_capture (standard error), and the verbs that let the library print (standard output).
#ifndef OLH_TOOLS_STREAM_IN_MEMORY_H
#define OLH_TOOLS_STREAM_IN_MEMORY_H

#include <cstdio>
#include <string>

namespace olh {

class StreamInMemory {
 public:
  // stdout or stderr. Throws std::system_error when nothing can be kept.
  explicit StreamInMemory(std::FILE* stream);
  StreamInMemory(const StreamInMemory&) = delete;
  StreamInMemory& operator=(const StreamInMemory&) = delete;
  ~StreamInMemory();

  // Ends the redirection and returns what was written.
  std::string text();

 private:
  void give_back();
  [[noreturn]] void fail();

  std::FILE* stream_;
  int descriptor_;
  int file_;
  int former_;
  bool given_back_ = false;
};

}  // namespace olh

#endif
