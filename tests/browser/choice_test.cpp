#include <string>

#include "browser.h"
#include "olh/support.h"
#include "scratch.h"

namespace {

using BrowserChoice = olh_test::Scratch;

TEST_F(BrowserChoice, TheFirstFirefoxElseTheFirstReadableMozillaElseNetscape) {
  for (const char* program : {"old/mozilla", "old/netscape", "netscape/netscape", "one/firefox", "two/firefox"})
    make_program(program);
  write("text/firefox", "text");
  write("text/mozilla", "text");
  make_directory("directory/firefox");
  const auto in = [this](const std::string& name) { return dir + "/" + name; };
  const std::pair<std::string, std::string> cases[] = {
      {in("old:") + in("one:") + in("two"), in("one/firefox")},
      {in("text:") + in("directory:") + in("two"), in("two/firefox")},
      {in("directory"), ""},
      {in("netscape:") + in("text:") + in("old"), in("text/mozilla")},
      {in("netscape:") + in("no-such-directory"), in("netscape/netscape")},
      {"::" + in("one/:"), in("one/firefox")},
      {"/" + std::string(OLH_BUFFER_SIZE, 'x') + ":" + in("one"), in("one/firefox")},
  };
  for (const auto& [directories, found] : cases) EXPECT_EQ(olh::search_browser(directories), found) << directories;
}

TEST_F(BrowserChoice, SystemDirectoriesFollowPath) {
  std::string buffer(OLH_BUFFER_SIZE, 'x');
  unset("PATH");
  const std::string in_system = olh::search_browser("/usr/bin:/usr/local/bin");
  EXPECT_EQ(OlhBrowser().getDefaultBrowser(buffer.data()), in_system.empty() ? -1 : 0);
  EXPECT_EQ(buffer.c_str(), in_system);
  set("PATH", bin);
  const std::string firefox = make_program("bin/firefox");
  EXPECT_EQ(OlhBrowser().getDefaultBrowser(buffer.data()), 0);
  EXPECT_EQ(buffer.c_str(), firefox);
}

// Found beside the user's choice, for the day on which he forgets it.
TEST_F(BrowserChoice, TheFoundOneIsKnownBesideTheChosenOne) {
  const std::string firefox = make_program("bin/firefox");
  const std::string chosen = make_program("a/chosen");
  write("home/.qel_viewer_config.ini", "QEL_HTML_BROWSER=\"" + chosen + "\"\n");
  OlhBrowser browser;
  browser.setBrowserDefaults("ignored at first");
  EXPECT_EQ(browser.d_viewerPaths->overridePath, chosen);
  EXPECT_EQ(browser.d_viewerPaths->defaultPath, firefox);
}

}  // namespace
