#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <string>
#include <vector>

#include "browser.h"
#include "olh/support.h"
#include "request.h"
#include "scratch.h"

namespace {

using Words = std::vector<std::string>;

std::vector<Words> arguments_of(const olh_test::Recorder& browser) {
  std::vector<Words> all;
  for (const olh_test::Invocation& call : browser.invocations()) all.push_back(call.arguments);
  return all;
}

const Words kPing = {"-remote", "ping()"};

Words remote(const std::string& url) { return {"-remote", "openURL(" + url + ",new-tab)"}; }

class BrowserShow : public olh_test::Scratch {
 protected:
  // The user's browser: one that runs, unless a test says otherwise.
  olh_test::Recorder add_browser() const {
    olh_test::Recorder browser = add_viewer("browser");
    browser.on_ping(0, "");
    set("QEL_HTML_BROWSER", browser.path);
    return browser;
  }
};

TEST_F(BrowserShow, RunningBrowserGetsTheUrlByteForByte) {
  const olh_test::Recorder browser = add_browser();
  const Words urls = {
      "http://example.com/a.html#b",
      "file:///d/index.htm#context=&topic=Intro",
      "http://example.com/'$(touch x)",
      "http://example.com/`touch x`;touch y",
      "a b\"c\\d$HOME",
      "http://example.com/\xc3\xbc",
      "http://example.com/\na\tb\x1b[0m\x7f\r",
      "",
      std::string(OLH_BUFFER_SIZE - 1, 'x'),
  };
  std::vector<Words> expected;
  for (const std::string& url : urls) {
    EXPECT_EQ(OlhBrowserOpenURL(url.c_str(), nullptr), OLH_RESULT_OK);
    expected.push_back(kPing);
    expected.push_back(remote(url));
  }
  EXPECT_EQ(arguments_of(browser), expected);
}

// As "#context=" carries an address: whatever is in it, olh-browser finds its end.
TEST_F(BrowserShow, AddressesOfAnyShapeReachTheBrowserLayerWhole) {
  const olh_test::Recorder browser = add_browser();
  const Words pieces = {" ", "'", "\"", "(", ",new-tab)", "\\", "$(touch x)", "`touch x`", "\xfc\xff%41#?", "\n"};
  Words urls;
  for (const std::string& one : pieces)
    for (const std::string& other : pieces) urls.emplace_back("file:///d/i.htm#context=").append(one).append(other);
  for (const std::string& url : urls) ASSERT_EQ(OlhBrowserOpenURL(url.c_str(), nullptr), OLH_RESULT_OK) << url;
  Words received;
  for (const Words& arguments : arguments_of(browser)) {
    const olh_viewers::BrowserRequest request = olh_viewers::parse_browser_request(arguments);
    if (request.kind == olh_viewers::BrowserRequest::Kind::kRemote) received.push_back(request.url);
  }
  EXPECT_EQ(received, urls);
}

TEST_F(BrowserShow, NoViewerGetsAnOption) {
  const olh_test::Recorder browser = add_browser();
  for (const std::string& url : Words{"-x", "--", std::string(OLH_BUFFER_SIZE, 'x')})
    EXPECT_EQ(OlhBrowserOpenURL(url.c_str(), nullptr), OLH_RESULT_FAILED) << url;
  EXPECT_EQ(arguments_of(browser), std::vector<Words>{});
}

TEST_F(BrowserShow, BrowserThatDoesNotRunIsStarted) {
  const olh_test::Recorder browser = add_browser();
  browser.on_ping(0, "No running window\n");
  EXPECT_EQ(OlhBrowserOpenURL("http://example.com/it's $x", nullptr), OLH_RESULT_OK);
  EXPECT_EQ(arguments_of(browser), (std::vector<Words>{kPing, {"http://example.com/it's $x"}}));
}

TEST_F(BrowserShow, FailedRemoteCommandLeadsToAStart) {
  const olh_test::Recorder browser = add_browser();
  browser.on_remote(1);
  EXPECT_EQ(OlhBrowserOpenURL("http://example.com/", nullptr), OLH_RESULT_OK);
  EXPECT_EQ(arguments_of(browser),
            (std::vector<Words>{kPing, remote("http://example.com/"), {"http://example.com/"}}));
}

// The URL fits, but not into the remote command, where each apostrophe takes four bytes.
TEST_F(BrowserShow, RemoteCommandThatDoesNotFitLeadsToAStart) {
  const olh_test::Recorder browser = add_browser();
  const std::string url(2100, '\'');
  EXPECT_EQ(OlhBrowserOpenURL(url.c_str(), nullptr), OLH_RESULT_OK);
  EXPECT_EQ(arguments_of(browser), (std::vector<Words>{kPing, {url}}));
}

// Such a host cannot know how the remote command ended: the page is rather shown twice than not at all.
TEST_F(BrowserShow, HostThatIgnoresItsChildrenGetsThePageShown) {
  const olh_test::Recorder browser = add_browser();
  signal(SIGCHLD, SIG_IGN);
  EXPECT_EQ(OlhBrowserOpenURL("u", nullptr), OLH_RESULT_OK);
  EXPECT_EQ(arguments_of(browser), (std::vector<Words>{kPing, remote("u"), {"u"}}));
}

TEST_F(BrowserShow, ProgramOfTheDocumentationTreeIsStartedWithoutAPing) {
  const olh_test::Recorder viewer = add_viewer("viewer");
  OlhBrowser browser;
  browser.d_viewerPaths = olh::make_viewer_paths();
  EXPECT_EQ(browser.openURL("u", nullptr), OLH_RESULT_NO_PROGRAM);
  EXPECT_EQ(browser.openURL("u", viewer.path.c_str()), OLH_RESULT_OK);
  EXPECT_EQ(arguments_of(viewer), std::vector<Words>{{"u"}});
}

TEST_F(BrowserShow, OverlongProgramIsRefused) {
  OlhBrowserSetPath(std::string(OLH_BUFFER_SIZE, 'x').c_str());
  EXPECT_EQ(OlhBrowserOpenURL("u", nullptr), OLH_RESULT_FAILED);
  EXPECT_EQ(OlhBrowserRunning(), OLH_RESULT_FAILED);
}

TEST_F(BrowserShow, MissingProgram) {
  OlhBrowserSetPath("/no/such/browser");
  set("OLH_DEBUG", "1");
  setDebugVariable();
  int result = -1;
  const std::string lines = olh_test::standard_error_of([&] { result = OlhBrowserOpenURL(nullptr, nullptr); });
  EXPECT_EQ(result, OLH_RESULT_FAILED);
  EXPECT_TRUE(lines.starts_with("OlhBrowser::openURL: \nOlhBrowser::isViewerRunning\n")) << lines;
  EXPECT_TRUE(
      lines.ends_with("OlhBrowser::isViewerRunning: done: viewer is running\n"
                      "sh: 1: /no/such/browser: not found\n"
                      "OlhBrowser::startBrowser\n"
                      "OlhBrowser::startBrowser: cmd: /no/such/browser '' &\n"
                      "OlhBrowser::startBrowser: failed: WEXITSTATUS error\n"
                      "OlhBrowser::openURL: failed\n"))
      << lines;
}

TEST_F(BrowserShow, StartWithASecondArgument) {
  const olh_test::Recorder viewer = add_viewer("viewer");
  set("OLH_DEBUG", "1");
  setDebugVariable();
  EXPECT_EQ(olh_test::standard_error_of([&] { OlhBrowser().startBrowser("u", "-new-window", viewer.path.c_str()); }),
            "OlhBrowser::startBrowser\n"
            "OlhBrowser::startBrowser: cmd: " +
                viewer.path +
                " 'u' '-new-window' &\n"
                "OlhBrowser::startBrowser: done\n");
  EXPECT_EQ(arguments_of(viewer), (std::vector<Words>{{"u", "-new-window"}}));
}

TEST_F(BrowserShow, StartHandsOnWhyItFailed) {
  EXPECT_EQ(OlhBrowser().startBrowser("u", nullptr, "/no/such/browser"), OLH_RESULT_NO_PROGRAM);
  EXPECT_EQ(OlhBrowser().startBrowser("u", nullptr, dir.c_str()), OLH_RESULT_FAILED) << "a directory";
  EXPECT_EQ(OlhBrowser().startBrowser(std::string(8192, 'x').c_str(), nullptr, "/bin/true"), OLH_RESULT_FAILED);
}

TEST_F(BrowserShow, DebugLinesWhenABrowserRuns) {
  const olh_test::Recorder browser = add_browser();
  OlhBrowserRunning();
  set("OLH_DEBUG", "1");
  setDebugVariable();
  const std::string lines = olh_test::standard_error_of([] { OlhBrowserOpenURL("u", nullptr); });
  EXPECT_TRUE(lines.starts_with("OlhBrowser::openURL: u\nOlhBrowser::isViewerRunning\n")) << lines;
  EXPECT_TRUE(lines.ends_with("OlhBrowser::isViewerRunning: done: viewer is running\nOlhBrowser::openURL: done\n"))
      << lines;
}

}  // namespace
