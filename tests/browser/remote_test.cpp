#include <string>

#include "browser.h"
#include "host.h"
#include "olh/support.h"
#include "scratch.h"

namespace {

using namespace olh_test;

class BrowserRemote : public Scratch {
 protected:
  static int ping(std::string program) { return OlhBrowser().mozRemotePing(program.data()); }

  const std::vector<Words> one_ping = {{"-remote", "ping()"}};
};

TEST_F(BrowserRemote, OutputTellsWhetherABrowserRuns) {
  const std::tuple<int, const char*, int> cases[] = {
      {0, "", OLH_RESULT_OK},
      {3, "", OLH_RESULT_OK},
      {0, "No running window found\n", OLH_RESULT_FAILED},
      {0, "Error: No running window", OLH_RESULT_FAILED},
      {0, "first\nfirefox is not running\nlast\n", OLH_RESULT_FAILED},
      {0, "Not Running\nno running window\n", OLH_RESULT_OK},
      {0, "not\nrunning\n", OLH_RESULT_OK},
  };
  const Recorder browser = add_viewer("browser");
  for (const auto& [status, output, result] : cases) {
    browser.on_ping(status, output);
    EXPECT_EQ(ping(browser.path), result) << output;
  }
  EXPECT_EQ(ping(make_program("complains", "#!/bin/sh\necho 'No running window' >&2\n")), OLH_RESULT_FAILED);
}

TEST_F(BrowserRemote, ProgramThatCannotBeAskedCountsAsRunning) {
  EXPECT_EQ(ping("/no/such/browser"), OLH_RESULT_OK);
  const Limit no_descriptors(RLIMIT_NOFILE, 0);
  EXPECT_EQ(ping("/no/such/browser"), OLH_RESULT_OK);
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
    const Recorder browser = add_viewer("-browser $x", directory);
    browser.on_ping(0, "not running");
    EXPECT_EQ(ping(browser.path), OLH_RESULT_FAILED) << browser.path;
    EXPECT_EQ(browser.arguments(), one_ping) << browser.path;
  }
  const Recorder bare = add_viewer("-remote");
  bare.on_ping(0, "not running");
  EXPECT_EQ(ping("-remote"), OLH_RESULT_FAILED);
  EXPECT_EQ(bare.arguments(), one_ping);
}

TEST_F(BrowserRemote, UserChoiceIsAskedElseTheFoundProgram) {
  const Recorder found = add_viewer("found");
  const Recorder chosen = add_viewer("chosen");
  found.on_ping(0, "");
  OlhBrowser browser;
  browser.d_viewerPaths = olh::make_viewer_paths();
  olh::replace_path(browser.d_viewerPaths->defaultPath, found.path.c_str());
  EXPECT_EQ(browser.isViewerRunning(), OLH_RESULT_OK);
  olh::replace_path(browser.d_viewerPaths->overridePath, chosen.path.c_str());
  EXPECT_EQ(browser.isViewerRunning(), OLH_RESULT_FAILED);
  EXPECT_EQ(found.arguments(), one_ping);
  EXPECT_EQ(chosen.arguments(), one_ping);
}

}  // namespace
