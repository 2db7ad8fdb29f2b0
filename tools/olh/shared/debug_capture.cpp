#include "debug_capture.h"

#include <cstdio>
#include <optional>

#include "environment.h"
#include "olh/support.h"
#include "output.h"
#include "stream_in_memory.h"

namespace olh {

namespace {

// Debug lines are on in this scope, whatever the user chose.
class DebugLinesForNow {
 public:
  DebugLinesForNow() { setDebugVariable(); }
  ~DebugLinesForNow() {
    variable_.reset();
    setDebugVariable();
  }
  DebugLinesForNow(const DebugLinesForNow&) = delete;
  DebugLinesForNow& operator=(const DebugLinesForNow&) = delete;

 private:
  std::optional<VariableForNow> variable_{std::in_place, "OLH_DEBUG", "1"};
};

}  // namespace

std::vector<std::string> debug_lines_of(const std::function<void()>& work) {
  const bool wanted = !variable("OLH_DEBUG").value_or("").empty();
  std::string text;
  {
    StreamInMemory memory(stderr);
    {
      const DebugLinesForNow on;
      work();
    }
    text = memory.text();
  }
  if (wanted) std::fputs(text.c_str(), stderr);
  return lines_of(text);
}

}  // namespace olh
