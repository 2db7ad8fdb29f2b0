#include "debug_capture.h"

#include <cstdio>

#include "environment.h"
#include "olh/support.h"
#include "output.h"
#include "stream_in_memory.h"

namespace olh {

std::vector<std::string> debug_lines_of(const std::function<void()>& work) {
  const bool wanted = !variable("OLH_DEBUG").empty();
  StreamInMemory memory(stderr);
  {
    const VariableForNow on("OLH_DEBUG", "1");
    setDebugVariable();
    work();
  }
  setDebugVariable();
  const std::string text = memory.text();
  if (wanted) std::fputs(text.c_str(), stderr);
  return lines_of(text);
}

}  // namespace olh
