#include "help_scene.h"

namespace {

using olh_test::HelpScene;
using olh_test::read_file;

class ViewerPaths : public HelpScene {
 protected:
  static std::string get(int viewer) {
    char path[OLH_BUFFER_SIZE] = "untouched";
    OlhGetViewerPath(viewer, path);
    return path;
  }
  std::string users_file() const { return read_file(home + "/.qel_viewer_config.ini"); }
};

TEST_F(ViewerPaths, ABareNameIsStoredWithTheFullPathThatWasFound) {
  const std::string other = make_program("bin/otherbrowser");
  EXPECT_EQ(OlhSetViewerPath(OLH_VIEWER_HTML, "otherbrowser"), OLH_RESULT_OK);
  EXPECT_EQ(get(OLH_VIEWER_HTML), other);
  EXPECT_NE(users_file().find("\n QEL_HTML_BROWSER=\"" + other + "\"\n"), std::string::npos) << users_file();
}

TEST_F(ViewerPaths, TheProgramInUseIsNotStoredAgain) {
  EXPECT_EQ(OlhSetViewerPath(OLH_VIEWER_HTML, browser.path.c_str()), OLH_RESULT_OK);
  EXPECT_EQ(users_file(), "");
}

TEST_F(ViewerPaths, ForgettingClearsTheStoredChoiceAndKeepsTheProgramInUse) {
  const std::string other = make_program("tools/reader");
  EXPECT_EQ(OlhSetViewerPath(OLH_VIEWER_PDF, other.c_str()), OLH_RESULT_OK);
  EXPECT_EQ(OlhSetViewerPath(OLH_VIEWER_PDF, ""), OLH_RESULT_OK);
  EXPECT_NE(users_file().find("QEL_PDF_READER=\"\"\n"), std::string::npos) << users_file();
  EXPECT_EQ(get(OLH_VIEWER_PDF), other);
}

TEST_F(ViewerPaths, RefusesWhatIsNoProgramOrNoViewer) {
  EXPECT_EQ(OlhSetViewerPath(OLH_VIEWER_PDF, "/no/such/reader"), OLH_RESULT_NO_PROGRAM);
  EXPECT_EQ(OlhSetViewerPath(OLH_VIEWER_PDF, "no-such-reader"), OLH_RESULT_NO_PROGRAM);
  EXPECT_EQ(OlhSetViewerPath(OLH_VIEWER_PDF, dir.c_str()), OLH_RESULT_NO_PROGRAM);
  EXPECT_EQ(OlhSetViewerPath(OLH_VIEWER_TOMEDECK, browser.path.c_str()), OLH_RESULT_INVALID);
  EXPECT_EQ(OlhSetViewerPath(5, nullptr), OLH_RESULT_INVALID);
  EXPECT_EQ(get(OLH_VIEWER_TOMEDECK), "untouched");
  EXPECT_EQ(OlhGetViewerPath(OLH_VIEWER_PDF, nullptr), OLH_RESULT_INVALID);
  EXPECT_EQ(users_file(), "");
}

TEST_F(ViewerPaths, WithoutAnyProgramTheBufferIsUntouched) {
  forget_browser();
  char path[OLH_BUFFER_SIZE] = "untouched";
  EXPECT_EQ(OlhGetViewerPath(OLH_VIEWER_HTML, path), OLH_RESULT_NO_PROGRAM);
  EXPECT_STREQ(path, "untouched");
}

TEST_F(ViewerPaths, ATreesChoiceGoesIntoTheTreesFileAndTakesEffectNextTime) {
  const std::string other = make_program("tools/browser");
  EXPECT_EQ(OlhSetAltViewerPath(OLH_VIEWER_HTML, other.c_str()), OLH_RESULT_OK);
  EXPECT_EQ(get(OLH_VIEWER_HTML), browser.path);
  EXPECT_NE(read_file(root + "/qel_doc_options.ini").find("QEL_HTML_BROWSER=\"" + other + "\"\n"), std::string::npos);
  forget_browser();
  OlhSetDocPath(root.c_str());
  EXPECT_EQ(get(OLH_VIEWER_HTML), other) << "the tree's choice stands behind the user's";
  EXPECT_EQ(OlhSetAltViewerPath(OLH_VIEWER_TOMEDECK, other.c_str()), OLH_RESULT_FAILED);
  EXPECT_EQ(OlhSetAltViewerPath(OLH_VIEWER_HTML, "/no/such"), OLH_RESULT_NO_PROGRAM);
}

TEST_F(ViewerPaths, ATreesChoiceNeedsATree) {
  unset("QEL_DOC_PATH");
  EXPECT_EQ(OlhSetAltViewerPath(OLH_VIEWER_HTML, browser.path.c_str()), OLH_RESULT_NOT_FOUND);
}

using DocPaths = HelpScene;

TEST_F(DocPaths, TheFirstRootIsTheOneThatIsGivenBack) {
  const std::string second = make_root("second");
  char path[OLH_BUFFER_SIZE] = "";
  EXPECT_EQ(OlhSetDocPath((second + ":" + root).c_str()), OLH_RESULT_OK);
  EXPECT_EQ(OlhGetDocPath(path), OLH_RESULT_OK);
  EXPECT_EQ(path, second);
  for (const std::string& refused : {std::string(), std::string(4096, '/')}) {
    EXPECT_EQ(OlhSetDocPath(refused.c_str()), OLH_RESULT_INVALID);
    EXPECT_EQ(OlhGetDocPath(path), OLH_RESULT_OK);
    EXPECT_EQ(path, second);
  }
  EXPECT_EQ(OlhGetDocPath(nullptr), OLH_RESULT_INVALID);
}

TEST_F(DocPaths, WithoutARootNothingIsGivenBack) {
  unset("QEL_DOC_PATH");
  char path[OLH_BUFFER_SIZE] = "untouched";
  EXPECT_EQ(OlhGetDocPath(path), OLH_RESULT_FAILED);
  EXPECT_STREQ(path, "untouched");
  EXPECT_EQ(OlhSetAltDocPath(root.c_str()), OLH_RESULT_NOT_FOUND);
  EXPECT_EQ(OlhGetAltDocPath(path), OLH_RESULT_OK);
  EXPECT_STREQ(path, "");
}

TEST_F(DocPaths, AnAlternateIsStoredAndLeads) {
  const std::string other = make_root("other");
  char path[OLH_BUFFER_SIZE] = "";
  EXPECT_EQ(OlhSetAltDocPath((other + ":/no/such").c_str()), OLH_RESULT_NOT_FOUND) << "one element was rejected";
  EXPECT_EQ(OlhGetDocPath(path), OLH_RESULT_OK);
  EXPECT_EQ(path, other);
  EXPECT_EQ(read_file(root + "/qel_doc_options.ini").find("/no/such"), std::string::npos);
  EXPECT_EQ(OlhGetAltDocPath(path), OLH_RESULT_OK);
  EXPECT_EQ(OlhGetAltDocPath(nullptr), OLH_RESULT_INVALID);
  EXPECT_EQ(OlhSetAltDocPath(""), OLH_RESULT_INVALID);
}

}  // namespace
