// The door: whatever a host hands in, and whichever allocation fails, every exported function comes back with one of its
// documented results, and nothing is written past a buffer.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <functional>
#include <ostream>
#include <string>
#include <thread>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "failing_allocator.h"
#include "help_scene.h"
#include "olh/dmerge.h"
#include "one_thread.h"

namespace {

// A caller's buffer with a guard behind it.
struct Buffer {
  char text[OLH_BUFFER_SIZE];
  char guard[64];
  Buffer() {
    std::memset(text, 'x', sizeof text);
    text[sizeof text - 1] = '\0';
    std::memset(guard, 'G', sizeof guard);
  }
  bool intact() const {
    for (const char c : guard)
      if (c != 'G') return false;
    return std::memchr(text, '\0', sizeof text) != nullptr;
  }
};

// An exported function with two texts and two buffers to spread over its arguments, and the results that it may have (none
// for a function that answers no number).
struct Call {
  const char* name;
  std::string arguments;  // as they are written below
  std::vector<long> results;
  std::function<long(const char*, const char*, char*, char*)> run;

  bool takes(char letter) const {
    const auto is_word = [](char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_'; };
    for (std::size_t i = 0; i < arguments.size(); ++i)
      if (arguments[i] == letter && (i == 0 || !is_word(arguments[i - 1])) && !is_word(arguments[i + 1])) return true;
    return false;
  }
  bool may_answer(long result) const {
    return results.empty() || std::find(results.begin(), results.end(), result) != results.end();
  }
  bool starts_reader() const { return std::string_view(name).starts_with("OlhAcro") && takes('b'); }
  // Whether it is an entry point of olh.h that tells its result in the trace log.
  bool is_traced() const {
    const std::string_view text = name;
    return text.starts_with("Olh") && !results.empty() && text != "OlhGetCurrentViewer" &&
           !text.starts_with("OlhBrowser") && !text.starts_with("OlhAcro");
  }
};

void PrintTo(const Call& call, std::ostream* out) { *out << call.name; }

char* mutable_copy(const char* text) {
  static char copy[8192];
  if (text == nullptr) return nullptr;
  std::strncpy(copy, text, sizeof copy - 1);
  return copy;
}

template <class... Result>
std::vector<long> one_of(Result... results) {
  return {results...};
}

template <class Function>
long number_from(Function function) {
  if constexpr (std::is_convertible_v<decltype(function()), long>) {
    return function();
  } else {
    function();
    return 0;
  }
}

#define OLH_CALL(results, name, ...)                                    \
  Call {                                                                \
#name, #__VA_ARGS__, one_of results, [](const char* a, const char* b, \
                                            char* x, char* y) {           \
      (void)a, (void)b, (void)x, (void)y;                                 \
      return number_from([&] { return name(__VA_ARGS__); });              \
    } \
  }

const std::vector<Call> kCalls = {OLH_CALL((0, 2, 3, 4, 5, 7), OlhHelpCall, a, b, 2),
                                  OLH_CALL((0, 2, 3, 4, 5, 7), OlhDocGotoTag, a, b),
                                  OLH_CALL((0, 3, 4, 6), OlhHelpTest, a, b),
                                  OLH_CALL((0, 2, 4, 7), OlhTomeDeck, a, b),
                                  OLH_CALL((0, 2, 3, 4, 7), OlhSearch, a, b),
                                  OLH_CALL((0, 2, 4, 5, 7), OlhBookcase, a, b),
                                  OLH_CALL((0), OlhSetViewer, 1, 0),
                                  OLH_CALL((0), OlhSetViewer, -1, 1),
                                  OLH_CALL((0, 3), OlhSetViewerOrder, a),
                                  OLH_CALL((0, 2), OlhIsViewerRunning, 1),
                                  OLH_CALL((0, 2, 3, 7), OlhGetViewerPath, 1, x),
                                  OLH_CALL((0, 2, 3, 7), OlhGetViewerPath, 0, x),
                                  OLH_CALL((0, 3, 5, 7), OlhSetViewerPath, 1, a),
                                  OLH_CALL((0, 3, 5, 7), OlhSetViewerPath, 0, a),
                                  OLH_CALL((0, 2, 4, 5, 7), OlhSetAltViewerPath, 1, a),
                                  OLH_CALL((0, 2, 4, 5, 7), OlhSetAltViewerPath, 0, a),
                                  OLH_CALL((0, 3), OlhSetDocPath, a),
                                  OLH_CALL((0, 2, 3), OlhGetDocPath, x),
                                  OLH_CALL((0, 3, 4, 5), OlhSetAltDocPath, a),
                                  OLH_CALL((0, 3, 5), OlhGetAltDocPath, x),
                                  OLH_CALL((), OlhVersion),
                                  OLH_CALL((-2, 0, 1), OlhGetCurrentViewer),
                                  OLH_CALL((), downcase, mutable_copy(a)),
                                  OLH_CALL((), dirslash, mutable_copy(a)),
                                  OLH_CALL((), urlslash, mutable_copy(a)),
                                  OLH_CALL((), remove_leaf, mutable_copy(a)),
                                  OLH_CALL((0, 1), exe_exists, a),
                                  OLH_CALL((0, 1), path_exists, a),
                                  OLH_CALL((0, 1), is_url, a),
                                  OLH_CALL((), string_pos, mutable_copy(a), b),
                                  OLH_CALL((), FormatTopic, mutable_copy(a)),
                                  OLH_CALL((), setDebugVariable),
                                  OLH_CALL((), print_debug, "%s\n", a == nullptr ? "" : a),
                                  OLH_CALL((), StartOlhLog, mutable_copy(a)),
                                  OLH_CALL((), CloseOlhLog),
                                  OLH_CALL((), OlhDocListInit),
                                  OLH_CALL((0, 1), GetOlhVariable, x, a),
                                  OLH_CALL((), SetOlhDisplayType, 7),
                                  OLH_CALL((0, 1, 2, 7), GetOlhDisplayType),
                                  OLH_CALL((1), SetOlhDocPath, a),
                                  OLH_CALL((), GetOlhDocPath),
                                  OLH_CALL((0, 1), FindPdfDoc, x, a, y),
                                  OLH_CALL((0, 1), FindHtmlDoc, x, a, y),
                                  OLH_CALL((0, 1), FindTomeDeck, x, a, y),
                                  OLH_CALL((0, 1), FindPath, x, a),
                                  OLH_CALL((0, 1), FindHtmlTopic, a, b, x),
                                  OLH_CALL((0, 1), FindHtmlTopic, "file:///d/index.htm", a, x),
                                  OLH_CALL((0, 2, 5, 7), showDocGotoTag, a, b, y),
                                  OLH_CALL((0, 2, 4, 7), HtmlSearch, a, b, a),
                                  OLH_CALL((0, 2, 4, 7), HtmlSearch, a, "doc", b),
                                  OLH_CALL((0, 2, 4, 7), HtmlSearch, a, "orvn", b),
                                  OLH_CALL((0, 2), isViewerRunning, 1),
                                  OLH_CALL((0, 2, 5, 7), startViewer),
                                  OLH_CALL((2), exitViewer),
                                  OLH_CALL((0, 4, 5), SetIniFile, 1, a, 1),
                                  OLH_CALL((0, 4, 5), SetIniFile, 3, a, 2),
                                  OLH_CALL((0, 4, 5), SetIniFile, 9, a, 9),
                                  OLH_CALL((0, 4), ReadIniFile, mutable_copy(a), x, y, x),
                                  OLH_CALL((0, 1), GetHomeDirectory, x),
                                  OLH_CALL((0), GetDocTreeViewerOverride, 1, x),
                                  OLH_CALL((0, 2, 4, 5), SetAltViewerPath, 0, a),
                                  OLH_CALL((0, 5), GetAltDocPath, x),
                                  OLH_CALL((0, 4, 5), SetAltDocPath, a),
                                  OLH_CALL((0, 1), search_path, x, a, b),
                                  OLH_CALL((0, 1), search_path, x, a, nullptr),
                                  OLH_CALL((0, 2, 4), OlhDmerge, a, nullptr),
                                  OLH_CALL((0, 1, 21, 42), dmerge, a, nullptr),
                                  OLH_CALL((0, 1), generateTdInstalledList, mutable_copy(a)),
                                  OLH_CALL((0, 42), generateDocLists, mutable_copy(a)),
                                  OLH_CALL((0, 21), extractLibList, mutable_copy(a)),
                                  OLH_CALL((0, 21), writeLibList, a),
                                  OLH_CALL((0, 21), writeLibAvail, a),
                                  OLH_CALL((), addToFoundTdList, mutable_copy(a)),
                                  OLH_CALL((0, 1), inFoundList, a),
                                  OLH_CALL((0), registerNewFile, mutable_copy(a)),
                                  OLH_CALL((), cleanPath, mutable_copy(a)),
                                  OLH_CALL((0, 1), pathExists, a),
                                  OLH_CALL((), lcStr, mutable_copy(a)),
                                  OLH_CALL((), clearLibList),
                                  OLH_CALL((), clearpdfTitlesList),
                                  OLH_CALL((), clearFoundList),
                                  OLH_CALL((), clearRegisteredFiles),
                                  OLH_CALL((), dmerge_init),
                                  OLH_CALL((), dmerge_free),
                                  OLH_CALL((0, 2), OlhBrowserRunning),
                                  OLH_CALL((0, 2, 7), OlhBrowserOpenURL, a, b),
                                  OLH_CALL((0, 2, 7), OlhBrowserGetPath, x, a),
                                  OLH_CALL((0), OlhBrowserSetPath, nullptr),
                                  OLH_CALL((2), OlhAcroIsViewerRunning),
                                  OLH_CALL((0, 2), OlhAcroViewerStart, nullptr, a, b, y),
                                  OLH_CALL((0, 5), OlhAcroDocOpen, a, b, y),
                                  OLH_CALL((0, 2, 7), OlhAcroGetViewerPath, x, a),
                                  OLH_CALL((0), OlhAcroSetPath, nullptr)};

// Viewers that are there and running, so that nothing waits; the viewer order stays with HTML.
class Boundary : public olh_test::HelpScene {
 protected:
  Boundary() {
    add_manual("guide");
    add_main_portal();
  }
};

// A function at a time: the whole of them would take a machine under load longer than a test may.
class HostileArguments : public Boundary, public ::testing::WithParamInterface<Call> {};

TEST_P(HostileArguments, ComeBack) {
  const std::string longest(OLH_BUFFER_SIZE - 1, 'n');
  const std::string too_long(OLH_BUFFER_SIZE, 'n');
  const std::string long_path = dir + std::string(4001 - dir.size(), '/') + std::string(94, 'p');
  const std::vector<const char*> texts = {
      nullptr,           "",    "guide",  longest.c_str(), too_long.c_str(), "a\nb\r\t",        "%s%n%d",
      "'\"`$(x);|&<>\\", "-rf", "/../..", "\xff\xfe\x80",  "http://",        "http://h:99999/", "file://",
      long_path.c_str(), ":::"};
  // Each in either place, where there are two: beside nothing, beside another one, and beside a name that is known.
  std::vector<std::pair<const char*, const char*>> pairs;
  for (const char* text : texts) {
    pairs.emplace_back(text, nullptr);
    if (!GetParam().takes('b')) continue;
    pairs.emplace_back(text, "'\"`$(x)\n");
    pairs.emplace_back("guide", text);
  }
  if (!GetParam().takes('a')) pairs.resize(1);
  // Each start of a reader is watched for two seconds.
  if (GetParam().starts_reader())
    pairs = {{nullptr, nullptr}, {longest.c_str(), too_long.c_str()}, {"-rf", "'\"`$(x)\n"}};
  const bool fills = GetParam().takes('x') || GetParam().takes('y');
  std::string log = dir + "/log";
  StartOlhLog(log.data());
  for (const auto& [first, second] : pairs) {
    Buffer out;
    Buffer viewer;
    viewer.text[0] = '\0';
    const long result = GetParam().run(first, second, out.text, viewer.text);
    ASSERT_TRUE(GetParam().may_answer(result)) << result << " for " << (first ? first : "null");
    const std::string told = std::string(GetParam().name) + " returned " + std::to_string(result) + "\n";
    ASSERT_TRUE(!GetParam().is_traced() || olh_test::read_file(log).ends_with(told))
        << told << (first ? first : "null");
    ASSERT_TRUE(!fills || GetParam().may_answer(GetParam().run(first, second, nullptr, nullptr)));
    ASSERT_TRUE(out.intact() && viewer.intact()) << (first ? first : "null");
  }
}

INSTANTIATE_TEST_SUITE_P(EveryFunction, HostileArguments, ::testing::ValuesIn(kCalls), [](const auto& call) {
  return std::string(call.param.name) + "_" + std::to_string(call.index);
});

TEST_F(Boundary, ManyRootsThatNobodyServesComeBack) {
  std::string many_roots;
  while (many_roots.size() < 4000) many_roots += "http://127.0.0.1:1/d:";
  Buffer out;
  SetOlhDocPath(many_roots.c_str());
  ASSERT_EQ(OlhGetDocPath(out.text), OLH_RESULT_OK);
  EXPECT_EQ(std::string(out.text), root) << "nobody listens there";
}

TEST_F(Boundary, AFailedAllocationIsAnOrdinaryFailure) {
  for (const Call& call : kCalls)
    for (long successes = 0; successes < 200; ++successes) {
      Buffer out;
      Buffer viewer;
      viewer.text[0] = '\0';
      olh_test::fail_allocations_after(successes);
      const long result = call.run("guide", "Intro", out.text, viewer.text);
      const bool enough = olh_test::allocations_asked() <= successes;
      olh_test::fail_allocations_after(-1);
      ASSERT_TRUE(out.intact() && viewer.intact()) << call.name << " after " << successes;
      ASSERT_TRUE(call.may_answer(result)) << call.name << " after " << successes << ": " << result;
      if (enough) break;
    }
  OlhSetDocPath(root.c_str());
  EXPECT_EQ(OlhHelpTest("guide", "Intro"), OLH_RESULT_OK) << "and afterwards all is as before";
}

#ifdef OLH_DETECT_THREADS
TEST_F(Boundary, IsWhereASecondThreadIsSeen) {
  const std::string said = "\n" + debug_lines_of([] {
                             const olh::OneThread first("first");
                             std::thread([] {
                               for (const Call& call : kCalls) {
                                 Buffer out;
                                 Buffer viewer;
                                 call.run("guide", "Intro", out.text, viewer.text);
                               }
                             }).join();
                           });
  std::string unseen;
  for (const Call& call : kCalls)
    if (said.find("\n" + std::string(call.name) + ": called while") == std::string::npos)
      unseen += std::string(call.name) + " ";
  EXPECT_EQ(unseen,
            "downcase dirslash urlslash remove_leaf exe_exists path_exists is_url string_pos cleanPath "
            "pathExists lcStr ")
      << "these have no state";
}
#endif

// One allocation is too large, and what comes after it is not.
TEST_F(Boundary, ARunThatBreaksOffForWantOfMemoryMakesNoShorterList) {
  add_pdf("paper");
  make_directory("docs/tomedecks/qel_td/js");
  const auto list_of_run = [this](long successes) {
    const std::string list = write("docs/htmldocs/QEL/lib/LibList.js", "none");
    olh_test::fail_allocations_after(successes, 1);
    const int result = dmerge(root.c_str(), nullptr);
    const bool failed = olh_test::allocations_asked() > successes;
    olh_test::fail_allocations_after(-1);
    EXPECT_TRUE(result != DMERGE_RESULT_OK || olh_test::read_file(list) != "none");
    return std::make_pair(olh_test::read_file(list), failed);
  };
  const std::string whole = list_of_run(-1).first;
  bool failed = true;
  for (long successes = 0; failed; ++successes) {
    std::string list;
    std::tie(list, failed) = list_of_run(successes);
    ASSERT_TRUE(list == whole || list == "none") << successes << "\n" << list;
  }
}

}  // namespace
