#include <gtest/gtest.h>

#include <string>

#include "acrobat_dde.h"
#include "olh/support.h"
#include "scratch.h"

namespace {

class ReaderChoice : public olh_test::Scratch {
 protected:
  static std::string path_in_use(const char* viewer_path = nullptr) {
    std::string buffer(OLH_BUFFER_SIZE, '\0');
    return OlhAcroGetViewerPath(buffer.data(), viewer_path) == OLH_RESULT_OK ? buffer.c_str() : "none";
  }
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
  EXPECT_EQ(path_in_use(), reader);
}

TEST_F(ReaderChoice, OrderOfTheKnownPrograms) {
  const std::string found = make_program("bin/acroread");
  EXPECT_EQ(path_in_use(), found);
  EXPECT_EQ(path_in_use("/tree/reader"), "/tree/reader");
  EXPECT_EQ(OlhAcroSetPath(""), OLH_RESULT_OK);
  EXPECT_EQ(OlhAcroSetPath(nullptr), OLH_RESULT_OK);
  EXPECT_EQ(path_in_use(), found);
  EXPECT_EQ(OlhAcroSetPath("/no/such/reader"), OLH_RESULT_OK);
  EXPECT_EQ(path_in_use("/tree/reader"), "/no/such/reader");
  EXPECT_STREQ(olhAcroDDENew.d_acroViewerExePath.get(), found.c_str());
}

TEST_F(ReaderChoice, OptionsFileBeatsVariableBeatsSearch) {
  make_program("bin/acroread");
  const std::string chosen = make_program("a/chosen");
  set("QEL_PDF_READER", "acroread");
  OlhAcroDDE by_variable;
  by_variable.setViewerDefaults(nullptr);
  EXPECT_STREQ(by_variable.d_viewerPaths->overridePath, "acroread");
  write("home/.qel_viewer_config.ini", "QEL_PDF_READER=\"" + chosen + "\"\n");
  OlhAcroDDE by_file;
  by_file.setViewerDefaults("ignored at first");
  EXPECT_STREQ(by_file.d_viewerPaths->overridePath, chosen.c_str());
  EXPECT_STREQ(by_file.d_viewerPaths->defaultPath, (bin + "/acroread").c_str());
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
}

TEST_F(ReaderChoice, NoReaderLeavesTheBufferUntouched) {
  if (machine_has_a_reader()) GTEST_SKIP() << "this machine has an acroread";
  std::string buffer = "untouched";
  buffer.resize(OLH_BUFFER_SIZE);
  EXPECT_EQ(OlhAcroGetViewerPath(buffer.data(), ""), OLH_RESULT_NO_PROGRAM);
  EXPECT_STREQ(buffer.c_str(), "untouched");
  EXPECT_EQ(OlhAcroIsViewerRunning(), OLH_RESULT_FAILED);
}

TEST_F(ReaderChoice, ReaderInstalledLaterIsFoundByTheNextStart) {
  if (machine_has_a_reader()) GTEST_SKIP() << "this machine has an acroread";
  OlhAcroIsViewerRunning();
  set("OLH_DEBUG", "1");
  setDebugVariable();
  // A document that no viewer may get: the choice is logged, nothing is started.
  const auto start = [] { EXPECT_EQ(OlhAcroViewerStart(nullptr, "-x", nullptr, nullptr), OLH_RESULT_FAILED); };
  EXPECT_EQ(olh_test::standard_error_of(start), "startViewer: pdf viewer not found\n");
  const std::string reader = make_program("bin/acroread");
  EXPECT_EQ(olh_test::standard_error_of(start),
            "startViewer: using default pdf viewer (d_acroViewerExePath): " + reader + "\nstartViewer: failed\n");
  EXPECT_EQ(olh_test::standard_error_of(start),
            "startViewer: using default pdf viewer: " + reader + "\nstartViewer: failed\n");
}

}  // namespace
