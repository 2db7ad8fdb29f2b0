#include <string>

#include "acrobat_dde.h"
#include "olh/support.h"
#include "scratch.h"

namespace {

class ReaderChoice : public olh_test::Scratch {
 protected:
  static bool machine_has_a_reader() {
    return exe_exists("/bin/acroread") == 1 || exe_exists("/usr/bin/acroread") == 1 ||
           exe_exists("/usr/local/bin/acroread") == 1;
  }
};

TEST_F(ReaderChoice, FirstExecutableReaderAlongPathIsFound) {
  write("a/acroread", "text");
  make_directory("b/acroread");
  const std::string reader = make_program("c/acroread");
  make_program("d/acroread");
  set("PATH", dir + "/a::" + dir + "/b:" + dir + "/c/:" + dir + "/d");
  OlhAcroDDE launcher;
  launcher.setViewerDefaults("ignored at first");
  EXPECT_EQ(launcher.d_acroViewerExePath.get(), reader);
  EXPECT_EQ(launcher.d_viewerPaths->defaultPath, reader);
  EXPECT_EQ(launcher.d_viewerPaths->overridePath, nullptr);
}

TEST_F(ReaderChoice, SearchThatFindsNothingKeepsTheBuffer) {
  if (machine_has_a_reader()) GTEST_SKIP() << "this machine has an acroread";
  OlhAcroDDE reader;
  EXPECT_EQ(reader.locateViewer(), OLH_RESULT_OK) << "before the buffer is made";
  reader.setViewerDefaults(nullptr);
  EXPECT_STREQ(reader.d_acroViewerExePath.get(), "");
  EXPECT_EQ(reader.d_viewerPaths->defaultPath, nullptr);
  EXPECT_EQ(reader.setViewerPath("/opt/acroread"), OLH_RESULT_OK);
  EXPECT_EQ(reader.locateViewer(), OLH_RESULT_OK);
  EXPECT_STREQ(reader.d_acroViewerExePath.get(), "/opt/acroread");
  char buffer[OLH_BUFFER_SIZE] = "untouched";
  EXPECT_EQ(OlhAcroGetViewerPath(buffer, ""), OLH_RESULT_NO_PROGRAM);
  EXPECT_STREQ(buffer, "untouched");
  EXPECT_EQ(OlhAcroIsViewerRunning(), OLH_RESULT_FAILED);
}

TEST_F(ReaderChoice, ReaderInstalledLaterIsFoundByTheNextStart) {
  if (machine_has_a_reader()) GTEST_SKIP() << "this machine has an acroread";
  OlhAcroIsViewerRunning();
  // A document that no viewer may get: the choice is logged, nothing is started.
  const auto start = [] { EXPECT_EQ(OlhAcroViewerStart(nullptr, "-x", nullptr, nullptr), OLH_RESULT_FAILED); };
  EXPECT_EQ(debug_lines_of(start), "startViewer: pdf viewer not found\n");
  make_program("bin/acroread");
  EXPECT_EQ(debug_lines_of(start),
            "startViewer: using default pdf viewer (d_acroViewerExePath): @/bin/acroread\nstartViewer: failed\n");
  EXPECT_EQ(debug_lines_of(start), "startViewer: using default pdf viewer: @/bin/acroread\nstartViewer: failed\n");
}

}  // namespace
