// The door: whatever a host hands in, and whichever allocation fails, every exported function comes back with one of its
// documented results, and nothing is written past a buffer.
#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "failing_allocator.h"
#include "olh/dmerge.h"
#include "olh/support.h"
#include "scratch.h"

namespace {

using olh_test::Recorder;

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

// An exported function with two texts and two buffers to spread over its arguments.
struct Call {
  const char* name;
  std::function<void(const char*, const char*, char*, char*)> run;
};

void PrintTo(const Call& call, std::ostream* out) { *out << call.name; }

char* mutable_copy(const char* text) {
  static char copy[8192];
  if (text == nullptr) return nullptr;
  std::strncpy(copy, text, sizeof copy - 1);
  return copy;
}

#define OLH_CALL(name, ...)                                                       \
  Call {                                                                          \
#name, [](const char* a, const char* b, char* x,                              \
              char* y) { (void)a, (void)b, (void)x, (void)y, name(__VA_ARGS__); } \
  }

const std::vector<Call> kCalls = {OLH_CALL(OlhHelpCall, a, b, 2),
                                  OLH_CALL(OlhDocGotoTag, a, b),
                                  OLH_CALL(OlhHelpTest, a, b),
                                  OLH_CALL(OlhTomeDeck, a, b),
                                  OLH_CALL(OlhSearch, a, b),
                                  OLH_CALL(OlhSetViewer, 1, 0),
                                  OLH_CALL(OlhSetViewer, -1, 1),
                                  OLH_CALL(OlhSetViewerOrder, a),
                                  OLH_CALL(OlhIsViewerRunning, 1),
                                  OLH_CALL(OlhGetViewerPath, 1, x),
                                  OLH_CALL(OlhGetViewerPath, 0, x),
                                  OLH_CALL(OlhSetViewerPath, 1, a),
                                  OLH_CALL(OlhSetViewerPath, 0, a),
                                  OLH_CALL(OlhSetAltViewerPath, 1, a),
                                  OLH_CALL(OlhSetAltViewerPath, 0, a),
                                  OLH_CALL(OlhSetDocPath, a),
                                  OLH_CALL(OlhGetDocPath, x),
                                  OLH_CALL(OlhSetAltDocPath, a),
                                  OLH_CALL(OlhGetAltDocPath, x),
                                  OLH_CALL(OlhVersion),
                                  OLH_CALL(OlhGetCurrentViewer),
                                  OLH_CALL(downcase, mutable_copy(a)),
                                  OLH_CALL(dirslash, mutable_copy(a)),
                                  OLH_CALL(urlslash, mutable_copy(a)),
                                  OLH_CALL(remove_leaf, mutable_copy(a)),
                                  OLH_CALL(exe_exists, a),
                                  OLH_CALL(path_exists, a),
                                  OLH_CALL(is_url, a),
                                  OLH_CALL(string_pos, mutable_copy(a), b),
                                  OLH_CALL(FormatTopic, mutable_copy(a)),
                                  OLH_CALL(setDebugVariable),
                                  OLH_CALL(print_debug, "%s", a == nullptr ? "" : a),
                                  OLH_CALL(StartOlhLog, mutable_copy(a)),
                                  OLH_CALL(CloseOlhLog),
                                  OLH_CALL(OlhDocListInit),
                                  OLH_CALL(GetOlhVariable, x, a),
                                  OLH_CALL(SetOlhDisplayType, 7),
                                  OLH_CALL(GetOlhDisplayType),
                                  OLH_CALL(SetOlhDocPath, a),
                                  OLH_CALL(GetOlhDocPath),
                                  OLH_CALL(FindPdfDoc, x, a, y),
                                  OLH_CALL(FindHtmlDoc, x, a, y),
                                  OLH_CALL(FindTomeDeck, x, a, y),
                                  OLH_CALL(FindPath, x, a),
                                  OLH_CALL(FindHtmlTopic, a, b, x),
                                  OLH_CALL(FindHtmlTopic, "file:///d/index.htm", a, x),
                                  OLH_CALL(showDocGotoTag, a, b, y),
                                  OLH_CALL(HtmlSearch, a, b, a),
                                  OLH_CALL(HtmlSearch, a, "doc", b),
                                  OLH_CALL(HtmlSearch, a, "orvn", b),
                                  OLH_CALL(isViewerRunning, 1),
                                  OLH_CALL(startViewer),
                                  OLH_CALL(exitViewer),
                                  OLH_CALL(SetIniFile, 1, a, 1),
                                  OLH_CALL(SetIniFile, 3, a, 2),
                                  OLH_CALL(SetIniFile, 9, a, 9),
                                  OLH_CALL(ReadIniFile, mutable_copy(a), x, y, x),
                                  OLH_CALL(GetHomeDirectory, x),
                                  OLH_CALL(GetDocTreeViewerOverride, 1, x),
                                  OLH_CALL(SetAltViewerPath, 0, a),
                                  OLH_CALL(GetAltDocPath, x),
                                  OLH_CALL(SetAltDocPath, a),
                                  OLH_CALL(search_path, x, a, b),
                                  OLH_CALL(search_path, x, a, nullptr),
                                  OLH_CALL(OlhDmerge, a, nullptr),
                                  OLH_CALL(dmerge, a, nullptr),
                                  OLH_CALL(generateTdInstalledList, mutable_copy(a)),
                                  OLH_CALL(generateDocLists, mutable_copy(a)),
                                  OLH_CALL(extractLibList, mutable_copy(a)),
                                  OLH_CALL(writeLibList, a),
                                  OLH_CALL(writeLibAvail, a),
                                  OLH_CALL(addToFoundTdList, mutable_copy(a)),
                                  OLH_CALL(inFoundList, a),
                                  OLH_CALL(registerNewFile, mutable_copy(a)),
                                  OLH_CALL(dmerge_free),
                                  OLH_CALL(OlhBrowserRunning),
                                  OLH_CALL(OlhBrowserOpenURL, a, b),
                                  OLH_CALL(OlhBrowserGetPath, x, a),
                                  OLH_CALL(OlhBrowserSetPath, nullptr),
                                  OLH_CALL(OlhAcroIsViewerRunning),
                                  OLH_CALL(OlhAcroGetViewerPath, x, a),
                                  OLH_CALL(OlhAcroSetPath, nullptr)};

// Viewers that are there and running, so that nothing waits; the viewer order stays with HTML.
class Boundary : public olh_test::Scratch {
 protected:
  Boundary() : browser(add_viewer("firefox")) {
    write("docs/htmldocs/guide/index.htm", "guide");
    write("docs/htmldocs/guide/QELdata/QELAllData.js", "QELAddTopic([\"Intro\",\"intro.htm\"]);\n");
    write("docs/tomedecks/index.html", "portal");
    make_root("docs");
    set("QEL_DOC_PATH", dir + "/docs");
    set("QEL_HTML_BROWSER", browser.path);
    set("QEL_PDF_READER", make_program("bin/acroread"));
    browser.on_ping(0, "");
  }
  Recorder browser;
};

// A function at a time: the whole of them would take a machine under load longer than a test may.
class HostileArguments : public Boundary, public ::testing::WithParamInterface<Call> {};

TEST_P(HostileArguments, ComeBack) {
  const std::string longest(OLH_BUFFER_SIZE - 1, 'n');
  const std::string too_long(OLH_BUFFER_SIZE, 'n');
  const std::string long_path = "/" + std::string(4000, '/') + std::string(94, 'p');
  const std::vector<const char*> texts = {
      nullptr,           "",    "guide",  longest.c_str(), too_long.c_str(), "a\nb\r\t",        "%s%n%d",
      "'\"`$(x);|&<>\\", "-rf", "/../..", "\xff\xfe\x80",  "http://",        "http://h:99999/", "file://",
      long_path.c_str(), ":::"};
  for (const char* first : texts)
    for (const char* second : {static_cast<const char*>(nullptr), "", "Intro", too_long.c_str(), "'\"`$(x)\n"}) {
      Buffer out;
      Buffer viewer;
      viewer.text[0] = '\0';
      GetParam().run(first, second, out.text, viewer.text);
      GetParam().run(first, second, nullptr, nullptr);
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
  EXPECT_EQ(std::string(out.text), dir + "/docs") << "nobody listens there";
}

TEST_F(Boundary, AFailedAllocationIsAnOrdinaryFailure) {
  for (const Call& call : kCalls)
    for (long successes = 0; successes < 200; ++successes) {
      Buffer out;
      Buffer viewer;
      viewer.text[0] = '\0';
      olh_test::fail_allocations_after(successes);
      call.run("guide", "Intro", out.text, viewer.text);
      const bool enough = olh_test::allocations_asked() <= successes;
      olh_test::fail_allocations_after(-1);
      ASSERT_TRUE(out.intact() && viewer.intact()) << call.name << " after " << successes;
      if (enough) break;
    }
  OlhSetDocPath((dir + "/docs").c_str());
  EXPECT_EQ(OlhHelpTest("guide", "Intro"), OLH_RESULT_OK) << "and afterwards all is as before";
}

}  // namespace
