// The network of a fuzz target: every name is known, every server takes a connection and answers as it is told. No packet
// and no look-up leaves the process.
#ifndef OLH_FUZZ_WEB_H
#define OLH_FUZZ_WEB_H

#include <cstddef>
#include <string>
#include <vector>

struct Web {
  std::string reply;
  std::size_t piece = 10000;  // as much of the reply as arrives at once
  std::size_t read = 0;       // bytes of the reply that were taken
  std::string sent;
  std::vector<std::string> hosts;  // that were asked for
  std::vector<int> ports;          // that were connected to
};

extern Web web;

// Forgets what went before.
void answer_with(std::string reply, std::size_t piece = 10000);

#endif
