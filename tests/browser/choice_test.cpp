#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "browser.h"
#include "olh/support.h"
#include "scratch.h"

namespace {

class BrowserChoice : public olh_test::Scratch {
 protected:
  static std::string path_in_use(const char* viewer_path = nullptr) {
    std::string buffer(OLH_BUFFER_SIZE, '\0');
    return OlhBrowserGetPath(buffer.data(), viewer_path) == OLH_RESULT_OK ? buffer.c_str() : "none";
  }
  std::string search(const std::string& directories) const { return olh::search_browser(directories); }
};

TEST_F(BrowserChoice, FirefoxInAnyDirectoryBeatsTheOthers) {
  make_program("a/mozilla");
  make_program("a/netscape");
  const std::string firefox = make_program("b/firefox");
  make_program("c/firefox");
  EXPECT_EQ(search(dir + "/a:" + dir + "/b:" + dir + "/c"), firefox);
}

TEST_F(BrowserChoice, FirefoxMustBeExecutable) {
  write("a/firefox", "text");
  make_directory("b/firefox");
  const std::string firefox = make_program("c/firefox");
  EXPECT_EQ(search(dir + "/a:" + dir + "/b:" + dir + "/c"), firefox);
  EXPECT_EQ(search(dir + "/a:" + dir + "/b"), "");
}

TEST_F(BrowserChoice, FirstReadableMozillaBeatsNetscape) {
  make_program("a/netscape");
  const std::string mozilla = write("b/mozilla", "text");
  make_program("c/mozilla");
  EXPECT_EQ(search(dir + "/a:" + dir + "/b:" + dir + "/c"), mozilla);
  EXPECT_EQ(search(dir + "/a:" + dir + "/no-such-directory"), dir + "/a/netscape");
}

TEST_F(BrowserChoice, SlashAtTheEndOfADirectoryIsNotDoubled) {
  const std::string firefox = make_program("a/firefox");
  EXPECT_EQ(search("::" + dir + "/a/:"), firefox);
}

TEST_F(BrowserChoice, CandidateThatDoesNotFitIsPassedOver) {
  const std::string firefox = make_program("a/firefox");
  EXPECT_EQ(search("/" + std::string(OLH_BUFFER_SIZE, 'x') + ":" + dir + "/a"), firefox);
}

TEST_F(BrowserChoice, SystemDirectoriesFollowPath) {
  std::string buffer(OLH_BUFFER_SIZE, 'x');
  unset("PATH");
  const std::string in_system = search("/usr/bin:/usr/local/bin");
  EXPECT_EQ(OlhBrowser().getDefaultBrowser(buffer.data()), in_system.empty() ? -1 : 0);
  EXPECT_EQ(buffer.c_str(), in_system);
  set("PATH", bin);
  const std::string firefox = make_program("bin/firefox");
  EXPECT_EQ(OlhBrowser().getDefaultBrowser(buffer.data()), 0);
  EXPECT_EQ(buffer.c_str(), firefox);
}

TEST_F(BrowserChoice, OrderOfTheKnownPrograms) {
  const std::string found = make_program("bin/firefox");
  EXPECT_EQ(path_in_use(), found);
  EXPECT_EQ(path_in_use("/tree/viewer"), "/tree/viewer");
  EXPECT_EQ(OlhBrowserSetPath(""), OLH_RESULT_OK);
  EXPECT_EQ(OlhBrowserSetPath(nullptr), OLH_RESULT_OK);
  EXPECT_EQ(path_in_use(), found);
  EXPECT_EQ(OlhBrowserSetPath("/no/such/browser"), OLH_RESULT_OK);
  EXPECT_EQ(path_in_use("/tree/viewer"), "/no/such/browser");
}

TEST_F(BrowserChoice, ChosenOnceAtTheFirstCall) {
  const std::string chosen = make_program("a/chosen");
  make_program("bin/firefox");
  set("QEL_HTML_BROWSER", chosen);
  EXPECT_EQ(path_in_use("/tree/viewer"), chosen);
  set("QEL_HTML_BROWSER", make_program("b/other"));
  EXPECT_EQ(path_in_use(), chosen);
}

TEST_F(BrowserChoice, DebugLinesTellWhereTheChoiceCameFrom) {
  const std::string firefox = make_program("bin/firefox");
  const std::string chosen = make_program("a/chosen");
  set("OLH_DEBUG", "1");
  setDebugVariable();
  OlhBrowser by_variable;
  set("QEL_HTML_BROWSER", chosen);
  const std::string search = "OlhBrowser::getDefaultBrowser\nOlhBrowser::getDefaultBrowser: " + firefox +
                             "\nOlhBrowser::setBrowserDefaults: done\n";
  std::string lines = olh_test::standard_error_of([&] { by_variable.setBrowserDefaults(nullptr); });
  EXPECT_TRUE(lines.starts_with("OlhBrowser::setBrowserDefaults\n")) << lines;
  EXPECT_TRUE(lines.ends_with("OlhBrowser::setBrowserDefaults: QEL_HTML_BROWSER: " + chosen + "\n" + search))
      << lines;
  OlhBrowser by_file;
  write("home/.qel_viewer_config.ini", "QEL_HTML_BROWSER=\"" + chosen + "\"\n");
  lines = olh_test::standard_error_of([&] { by_file.setBrowserDefaults("ignored at first"); });
  EXPECT_TRUE(lines.ends_with("OlhBrowser::setBrowserDefaults: qel_viewer_config.ini: " + chosen + "\n" + search))
      << lines;
  EXPECT_STREQ(by_file.d_viewerPaths->overridePath, chosen.c_str());
  EXPECT_STREQ(by_file.d_viewerPaths->defaultPath, firefox.c_str());
}

}  // namespace
