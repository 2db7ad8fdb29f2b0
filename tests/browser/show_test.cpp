#include <csignal>
#include <string>
#include <thread>

#include "browser.h"
#include "host.h"
#include "olh-browser/browser.h"
#include "olh/support.h"
#include "scratch.h"

namespace {

using namespace olh_test;
using Calls = std::vector<Words>;

const Words kPing = {"-remote", "ping()"};

Words remote(const std::string& url) { return {"-remote", "openURL(" + url + ",new-tab)"}; }

// The user's browser: one that runs, unless a test says otherwise.
class BrowserShow : public Scratch {
 protected:
  BrowserShow() {
    browser.on_ping(0, "");
    set("QEL_HTML_BROWSER", browser.path);
  }
  const Recorder browser = add_viewer("browser");
};

TEST_F(BrowserShow, RunningBrowserGetsTheUrlByteForByte) {
  Calls expected;
  for (const std::string& url : Words{
           "http://example.com/a.html#b",
           "file:///d/index.htm#context=&topic=Intro",
           "http://example.com/'$(touch x)",
           "http://example.com/`touch x`;touch y",
           "a b\"c\\d$HOME",
           "http://example.com/\xc3\xbc",
           "http://example.com/\na\tb\x1b[0m\x7f\r",
           "",
           std::string(OLH_BUFFER_SIZE - 1, 'x'),
       }) {
    EXPECT_EQ(OlhBrowserOpenURL(url.c_str(), nullptr), OLH_RESULT_OK);
    expected.push_back(kPing);
    expected.push_back(remote(url));
  }
  EXPECT_EQ(browser.arguments(), expected);
}

// As "#context=" carries an address: whatever is in it, olh-browser finds its end. Of each two pieces one address has the one before
// the other, and each piece ends one.
TEST_F(BrowserShow, AddressesOfAnyShapeReachTheBrowserLayerWhole) {
  const Words pieces = {" ", "'", "\"", "(", ",new-tab)", "\\", "$(touch x)", "`touch x`", "\xfc\xff%41#?", "\n"};
  Words urls;
  for (std::size_t at = 0; at < pieces.size(); ++at) {
    urls.emplace_back("file:///d/i.htm#context=");
    for (std::size_t step = 1; step <= pieces.size(); ++step)
      urls.back().append(pieces[at]).append(pieces[(at + step) % pieces.size()]);
  }
  for (const std::string& url : urls) ASSERT_EQ(OlhBrowserOpenURL(url.c_str(), nullptr), OLH_RESULT_OK) << url;
  Words received;
  for (const Words& arguments : browser.arguments()) {
    const olh_viewers::Request request = olh_viewers::browser_request(arguments);
    if (request.kind == olh_viewers::Request::Kind::kRemote) received.push_back(request.document);
  }
  EXPECT_EQ(received, urls);
}

TEST_F(BrowserShow, NoViewerGetsAnOption) {
  for (const std::string& url : Words{"-x", "--", std::string(OLH_BUFFER_SIZE, 'x')})
    EXPECT_EQ(OlhBrowserOpenURL(url.c_str(), nullptr), OLH_RESULT_FAILED) << url;
  EXPECT_EQ(browser.arguments(), Calls{});
}

TEST_F(BrowserShow, BrowserThatDoesNotRunIsStarted) {
  browser.on_ping(0, "No running window\n");
  EXPECT_EQ(OlhBrowserOpenURL("http://example.com/it's $x", nullptr), OLH_RESULT_OK);
  EXPECT_EQ(browser.arguments(), (Calls{kPing, {"http://example.com/it's $x"}}));
}

TEST_F(BrowserShow, FailedRemoteCommandLeadsToAStart) {
  browser.on_remote(1);
  EXPECT_EQ(OlhBrowserOpenURL("http://example.com/", nullptr), OLH_RESULT_OK);
  EXPECT_EQ(browser.arguments(), (Calls{kPing, remote("http://example.com/"), {"http://example.com/"}}));
}

// The URL fits, but not into the remote command, where each apostrophe takes four bytes.
TEST_F(BrowserShow, RemoteCommandThatDoesNotFitLeadsToAStart) {
  const std::string url(2100, '\'');
  EXPECT_EQ(OlhBrowserOpenURL(url.c_str(), nullptr), OLH_RESULT_OK);
  EXPECT_EQ(browser.arguments(), (Calls{kPing, {url}}));
}

// Such a host cannot know how the remote command ended: the page is rather shown twice than not at all.
TEST_F(BrowserShow, HostThatIgnoresItsChildrenGetsThePageShown) {
  signal(SIGCHLD, SIG_IGN);
  EXPECT_EQ(OlhBrowserOpenURL("u", nullptr), OLH_RESULT_OK);
  EXPECT_EQ(browser.arguments(), (Calls{kPing, remote("u"), {"u"}}));
}

TEST_F(BrowserShow, ProgramOfTheDocumentationTreeIsStartedWithoutAPing) {
  OlhBrowser launcher;
  launcher.d_viewerPaths = olh::make_viewer_paths();
  EXPECT_EQ(launcher.openURL("u", nullptr), OLH_RESULT_NO_PROGRAM);
  EXPECT_EQ(launcher.openURL("u", browser.path.c_str()), OLH_RESULT_OK);
  EXPECT_EQ(browser.arguments(), Calls{{"u"}});
}

TEST_F(BrowserShow, OverlongProgramIsRefused) {
  OlhBrowserSetPath(std::string(OLH_BUFFER_SIZE, 'x').c_str());
  EXPECT_EQ(OlhBrowserOpenURL("u", nullptr), OLH_RESULT_FAILED);
  EXPECT_EQ(OlhBrowserRunning(), OLH_RESULT_FAILED);
}

TEST_F(BrowserShow, StartHasASecondArgumentAndHandsOnWhyItFailed) {
  EXPECT_EQ(OlhBrowser().startBrowser("u", "-new-window", browser.path.c_str()), OLH_RESULT_OK);
  EXPECT_EQ(browser.arguments(), (Calls{{"u", "-new-window"}}));
  EXPECT_EQ(OlhBrowser().startBrowser("u", nullptr, "/no/such/browser"), OLH_RESULT_NO_PROGRAM);
  EXPECT_EQ(OlhBrowser().startBrowser("u", nullptr, dir.c_str()), OLH_RESULT_FAILED) << "a directory";
  EXPECT_EQ(OlhBrowser().startBrowser(std::string(8192, 'x').c_str(), nullptr, "/bin/true"), OLH_RESULT_FAILED);
}

// In a thread that ends with the test: a sanitizer's search for leaks, at the end of the process, needs these calls.
TEST_F(BrowserShow, AStartThatTheSystemRefusesIsAFailure) {
  std::thread([this] {
    for (const auto& [call, error, said] :
         {std::tuple(SYS_wait4, EPERM, "wait_pid == -1\n"), {SYS_clone, EAGAIN, "pid == -1\n"}}) {
      if (!refuse(call, error)) GTEST_SKIP() << "no system call filter here";
      int result = -1;
      const std::string lines =
          debug_lines_of([&] { result = OlhBrowser().startBrowser("u", nullptr, "/bin/true"); });
      EXPECT_EQ(result, OLH_RESULT_FAILED);
      EXPECT_TRUE(lines.ends_with(std::string("OlhBrowser::startBrowser: failed: ") + said)) << lines;
    }
    EXPECT_EQ(OlhAcroViewerStart(nullptr, nullptr, nullptr, "/bin/true"), OLH_RESULT_FAILED);
  }).join();
}

}  // namespace
