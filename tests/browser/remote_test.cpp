#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <string>
#include <vector>

#include "browser.h"
#include "olh/support.h"
#include "scratch.h"

namespace {

using Words = std::vector<std::string>;

class BrowserRemote : public olh_test::Scratch {
 protected:
  static int ping(std::string program) { return OlhBrowser().mozRemotePing(program.data()); }
};

TEST_F(BrowserRemote, OutputTellsWhetherABrowserRuns) {
  const struct {
    int status;
    std::string output;
    int result;
  } cases[] = {
      {0, "", OLH_RESULT_OK},
      {3, "", OLH_RESULT_OK},
      {0, "No running window found\n", OLH_RESULT_FAILED},
      {0, "Error: No running window", OLH_RESULT_FAILED},
      {0, "first\nfirefox is not running\nlast\n", OLH_RESULT_FAILED},
      {0, "Not Running\nno running window\n", OLH_RESULT_OK},
      {0, "not\nrunning\n", OLH_RESULT_OK},
  };
  const olh_test::Recorder browser = add_viewer("browser");
  for (const auto& test : cases) {
    browser.on_ping(test.status, test.output);
    EXPECT_EQ(ping(browser.path), test.result) << test.output;
  }
  EXPECT_EQ(browser.invocations().at(0).arguments, (Words{"-remote", "ping()"}));
}

TEST_F(BrowserRemote, StandardErrorCountsAsOutput) {
  const std::string script = write("bin/browser", "#!/bin/sh\necho 'No running window' >&2\n");
  chmod(script.c_str(), 0700);
  EXPECT_EQ(ping(script), OLH_RESULT_FAILED);
}

TEST_F(BrowserRemote, ProgramThatCannotBeAskedCountsAsRunning) {
  EXPECT_EQ(ping("/no/such/browser"), OLH_RESULT_OK);
  rlimit limit = {};
  getrlimit(RLIMIT_NOFILE, &limit);
  limit.rlim_cur = 0;
  setrlimit(RLIMIT_NOFILE, &limit);
  EXPECT_EQ(ping("/no/such/browser"), OLH_RESULT_OK);
  limit.rlim_cur = limit.rlim_max;
  setrlimit(RLIMIT_NOFILE, &limit);
}

TEST_F(BrowserRemote, NoProgramIsNotRunning) {
  EXPECT_EQ(OlhBrowser().mozRemotePing(nullptr), OLH_RESULT_FAILED);
  EXPECT_EQ(ping(""), OLH_RESULT_FAILED);
  EXPECT_EQ(ping(std::string(OLH_BUFFER_SIZE, 'x')), OLH_RESULT_FAILED);
  EXPECT_EQ(ping(std::string(4000, '\'')), OLH_RESULT_FAILED) << "quoted it fills more than a command line";
  EXPECT_EQ(OlhBrowser().isViewerRunning(), OLH_RESULT_FAILED);
}

TEST_F(BrowserRemote, ProgramWithAnyNameIsAsked) {
  for (const char* directory : {"a b", "it's", "$(touch x)", "`touch x`", "a;touch x", "a=b", "~", "l\nf"}) {
    const olh_test::Recorder browser = add_viewer("-browser $x", directory);
    browser.on_ping(0, "not running");
    EXPECT_EQ(ping(browser.path), OLH_RESULT_FAILED) << browser.path;
    EXPECT_EQ(browser.invocations().size(), 1U) << browser.path;
  }
  const olh_test::Recorder bare = add_viewer("-remote");
  bare.on_ping(0, "not running");
  EXPECT_EQ(ping("-remote"), OLH_RESULT_FAILED);
  EXPECT_EQ(bare.invocations().at(0).arguments, (Words{"-remote", "ping()"}));
}

TEST_F(BrowserRemote, UserChoiceIsAskedElseTheFoundProgram) {
  const olh_test::Recorder found = add_viewer("found");
  const olh_test::Recorder chosen = add_viewer("chosen");
  found.on_ping(0, "");
  OlhBrowser browser;
  browser.d_viewerPaths = olh::make_viewer_paths();
  olh::replace_path(browser.d_viewerPaths->defaultPath, found.path.c_str());
  EXPECT_EQ(browser.isViewerRunning(), OLH_RESULT_OK);
  olh::replace_path(browser.d_viewerPaths->overridePath, chosen.path.c_str());
  EXPECT_EQ(browser.isViewerRunning(), OLH_RESULT_FAILED);
  EXPECT_EQ(found.invocations().size(), 1U);
  EXPECT_EQ(chosen.invocations().size(), 1U);
}

TEST_F(BrowserRemote, DebugLines) {
  const olh_test::Recorder browser = add_viewer("browser");
  browser.on_ping(0, "one\nnot running");
  set("OLH_DEBUG", "1");
  setDebugVariable();
  OlhBrowserSetPath(browser.path.c_str());
  EXPECT_EQ(olh_test::standard_error_of([] { OlhBrowserRunning(); }),
            "OlhBrowser::isViewerRunning\n"
            "OlhBrowser::mozRemotePing\n"
            "OlhBrowser::mozRemotePing: cmd: " +
                browser.path +
                " -remote 'ping()' 2>&1\n"
                "OlhBrowser::mozRemotePing: buf: one\n"
                "OlhBrowser::mozRemotePing: buf: not running\n"
                "OlhBrowser::mozRemotePing: browser is not running\n"
                "OlhBrowser::isViewerRunning: done: viewer is not running\n");
}

}  // namespace
