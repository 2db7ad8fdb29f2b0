#include "help_scene.h"

namespace {

using namespace olh_test;

class ViewerPaths : public HelpScene {
 protected:
  // The program, or the result and what is left in a buffer that was not empty.
  std::string get(int viewer) const {
    char path[OLH_BUFFER_SIZE] = "untouched";
    const int result = OlhGetViewerPath(viewer, path);
    return result == OLH_RESULT_OK ? shortened(path) : std::to_string(result) + " " + path;
  }
  std::string users_file() const { return shortened(read_file(home + "/.qel_viewer_config.ini")); }
};

TEST_F(ViewerPaths, ABareNameIsStoredWithTheFullPathThatWasFound) {
  make_program("bin/otherbrowser");
  EXPECT_EQ(OlhSetViewerPath(OLH_VIEWER_HTML, "otherbrowser"), OLH_RESULT_OK);
  EXPECT_EQ(get(OLH_VIEWER_HTML), "@/bin/otherbrowser");
  EXPECT_TRUE(users_file().ends_with("\n QEL_HTML_BROWSER=\"@/bin/otherbrowser\"\n")) << users_file();
}

TEST_F(ViewerPaths, TheProgramInUseIsNotStoredAgain) {
  const std::string said =
      debug_lines_of([this] { EXPECT_EQ(OlhSetViewerPath(OLH_VIEWER_HTML, browser.path.c_str()), OLH_RESULT_OK); });
  EXPECT_TRUE(said.ends_with("\nOlhSetViewerPath: done (returned 0)\n")) << said;
  EXPECT_EQ(users_file(), "");
}

TEST_F(ViewerPaths, ForgettingClearsTheStoredChoiceAndKeepsTheProgramInUse) {
  EXPECT_EQ(OlhSetViewerPath(OLH_VIEWER_PDF, make_program("tools/reader").c_str()), OLH_RESULT_OK);
  EXPECT_EQ(OlhSetViewerPath(OLH_VIEWER_PDF, ""), OLH_RESULT_OK);
  EXPECT_TRUE(users_file().ends_with("QEL_PDF_READER=\"\"\n")) << users_file();
  EXPECT_EQ(get(OLH_VIEWER_PDF), "@/tools/reader");
}

TEST_F(ViewerPaths, RefusesWhatIsNoProgramOrNoViewer) {
  for (const char* none : {"/no/such/reader", "no-such-reader", dir.c_str()})
    EXPECT_EQ(OlhSetViewerPath(OLH_VIEWER_PDF, none), OLH_RESULT_NO_PROGRAM) << none;
  EXPECT_EQ(OlhSetViewerPath(OLH_VIEWER_TOMEDECK, browser.path.c_str()), OLH_RESULT_INVALID);
  EXPECT_EQ(OlhSetViewerPath(5, nullptr), OLH_RESULT_INVALID);
  EXPECT_EQ(get(OLH_VIEWER_TOMEDECK), "3 untouched");
  EXPECT_EQ(OlhGetViewerPath(OLH_VIEWER_PDF, nullptr), OLH_RESULT_INVALID);
  EXPECT_EQ(users_file(), "");
}

TEST_F(ViewerPaths, WithoutAnyProgramTheBufferIsUntouched) {
  forget_browser();
  EXPECT_EQ(get(OLH_VIEWER_HTML), "7 untouched");
}

TEST_F(ViewerPaths, ATreesChoiceGoesIntoTheTreesFileAndTakesEffectNextTime) {
  const std::string other = make_program("tools/browser");
  EXPECT_EQ(OlhSetAltViewerPath(OLH_VIEWER_HTML, other.c_str()), OLH_RESULT_OK);
  EXPECT_EQ(get(OLH_VIEWER_HTML), "@/bin/firefox");
  EXPECT_NE(read_file(root + "/qel_doc_options.ini").find("QEL_HTML_BROWSER=\"" + other + "\"\n"), std::string::npos);
  forget_browser();
  OlhSetDocPath(root.c_str());
  EXPECT_EQ(get(OLH_VIEWER_HTML), "@/tools/browser") << "the tree's choice stands behind the user's";
  EXPECT_EQ(OlhSetAltViewerPath(OLH_VIEWER_TOMEDECK, other.c_str()), OLH_RESULT_FAILED);
  EXPECT_EQ(OlhSetAltViewerPath(OLH_VIEWER_HTML, "/no/such"), OLH_RESULT_NO_PROGRAM);
}

TEST_F(ViewerPaths, ATreesChoiceNeedsATree) {
  unset("QEL_DOC_PATH");
  EXPECT_EQ(OlhSetAltViewerPath(OLH_VIEWER_HTML, browser.path.c_str()), OLH_RESULT_NOT_FOUND);
}

class DocPaths : public HelpScene {
 protected:
  // The answer, and what is left in a buffer that was not empty.
  std::string answer(int (*call)(char*) noexcept) const {
    char path[OLH_BUFFER_SIZE] = "untouched";
    const int result = call(path);
    return std::to_string(result) + " " + shortened(path);
  }
};

TEST_F(DocPaths, TheFirstRootIsTheOneThatIsGivenBack) {
  EXPECT_EQ(OlhSetDocPath((make_root("second") + ":" + root).c_str()), OLH_RESULT_OK);
  EXPECT_EQ(answer(OlhGetDocPath), "0 @/second");
  for (const std::string& refused : {std::string(), std::string(4096, '/')}) {
    EXPECT_EQ(OlhSetDocPath(refused.c_str()), OLH_RESULT_INVALID);
    EXPECT_EQ(answer(OlhGetDocPath), "0 @/second");
  }
  EXPECT_EQ(OlhGetDocPath(nullptr), OLH_RESULT_INVALID);
}

TEST_F(DocPaths, WithoutARootNothingIsGivenBack) {
  unset("QEL_DOC_PATH");
  EXPECT_EQ(answer(OlhGetDocPath), "2 untouched");
  EXPECT_EQ(OlhSetAltDocPath(root.c_str()), OLH_RESULT_NOT_FOUND);
  EXPECT_EQ(answer(OlhGetAltDocPath), "0 ");
}

TEST_F(DocPaths, AnAlternateIsStoredAndLeads) {
  const std::string alternates = make_root("other") + ":/no/such";
  EXPECT_EQ(OlhSetAltDocPath(alternates.c_str()), OLH_RESULT_NOT_FOUND) << "one element was rejected";
  EXPECT_EQ(answer(OlhGetDocPath), "0 @/other");
  EXPECT_EQ(answer(OlhGetAltDocPath), "0 @/other");
  EXPECT_EQ(OlhGetAltDocPath(nullptr), OLH_RESULT_INVALID);
  EXPECT_EQ(OlhSetAltDocPath(""), OLH_RESULT_INVALID);
}

}  // namespace
