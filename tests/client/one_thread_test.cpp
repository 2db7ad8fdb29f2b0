// In builds that look for it: calls from two threads at once are named.
#include <latch>
#include <thread>

#include "olh/dmerge.h"
#include "olh/support.h"
#include "one_thread.h"
#include "scratch.h"

namespace {

// The functions that the debug output names, each with a blank behind it.
std::string named_in(const std::string& said) {
  const std::string words = ": called while another thread is inside the library\n";
  std::string named;
  for (std::size_t end = said.find(words); end != std::string::npos; end = said.find(words, end + 1)) {
    const std::size_t line = said.rfind('\n', end) + 1;
    named += said.substr(line, end - line) + " ";
  }
  return named;
}

using OneThread = olh_test::Scratch;

// Called from inside OlhDmerge, for the first list only.
extern "C" int call_from_both_threads(char*) {
  static bool is_first = true;
  if (!is_first) return 0;
  is_first = false;
  char out[OLH_BUFFER_SIZE];
  OlhGetDocPath(out);
  std::thread([&out] {
    OlhGetDocPath(out);
    FindPath(out, "x");
  }).join();
  return 0;
}

TEST_F(OneThread, CallsFromTwoThreadsAtOnceAreNamedInTheDebugOutput) {
  const std::string root = make_root("docs");
  make_directory("docs/tomedecks/qel_td/js");
  const std::string said = debug_lines_of([&] {
    OlhDmerge(root.c_str(), call_from_both_threads);
    std::thread([] { OlhGetDocPath(nullptr); }).join();
  });
  EXPECT_EQ(named_in(said), "OlhGetDocPath FindPath ");
}

TEST_F(OneThread, TheSecondIsStillInsideWhenTheFirstHasLeft) {
  std::latch entered(1);
  std::latch end(1);
  std::thread second;
  const std::string said = debug_lines_of([&] {
    {
      const olh::OneThread first("first");
      second = std::thread([&] {
        const olh::OneThread inside("second");
        entered.count_down();
        end.wait();
      });
      entered.wait();
    }
    GetOlhDisplayType();
  });
  end.count_down();
  second.join();
  EXPECT_EQ(named_in(said), "second GetOlhDisplayType ");
}

}  // namespace
