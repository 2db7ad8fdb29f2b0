#include <cctype>
#include <clocale>
#include <cstdlib>
#include <cstring>

#include "olh/support.h"
#include "scratch.h"

namespace {

using Wrappers = olh_test::Scratch;

// The instance lives as long as the process; each of these is the first use in a process of its own.
TEST_F(Wrappers, NothingConfiguredIsNoPath) {
  EXPECT_EQ(GetOlhDocPath(), nullptr);
  EXPECT_EQ(GetOlhDisplayType(), OLH_DISPLAY_NORMAL);
  SetOlhDisplayType(7);
  EXPECT_EQ(GetOlhDisplayType(), 7);
}

TEST_F(Wrappers, EnvironmentFixesTheDisplayTypeForTheProcess) {
  set("QEL_OLH_DISPLAY_TYPE", "Popup");
  SetOlhDisplayType(OLH_DISPLAY_NORMAL);
  EXPECT_EQ(GetOlhDisplayType(), OLH_DISPLAY_POPUP);
  set("QEL_OLH_DISPLAY_TYPE", "topic");
  OlhDocListInit();
  EXPECT_EQ(GetOlhDisplayType(), OLH_DISPLAY_POPUP);
}

TEST_F(Wrappers, EveryFunctionReadsTheEnvironmentFirst) {
  const std::string root = make_root("docs");
  set("QEL_DOC_PATH", root);
  ASSERT_NE(GetOlhDocPath(), nullptr);
  EXPECT_EQ(GetOlhDocPath(), root);
}

TEST_F(Wrappers, UnknownViewersDoNotRun) {
  for (const OlhViewer viewer : {OlhViewer{OLH_VIEWER_TOMEDECK}, OlhViewer{OLH_VIEWER_DEFAULT}, 2})
    EXPECT_EQ(isViewerRunning(viewer), 2);
  EXPECT_EQ(exitViewer(), 2);
  OlhSetViewer(OLH_VIEWER_TOMEDECK, 0);
  EXPECT_EQ(startViewer(), 2);
}

TEST_F(Wrappers, PathAndVariableTakeNull) {
  const std::string root = make_root("docs");
  set("QEL_DOC_PATH", root);
  char value[OLH_BUFFER_SIZE] = "left over";
  EXPECT_EQ(GetOlhVariable(nullptr, "QEL_DOC_PATH"), 0);
  EXPECT_EQ(GetOlhVariable(value, nullptr), 0);
  EXPECT_STREQ(value, "");
  EXPECT_EQ(SetOlhDocPath(make_root("host").c_str()), 1);
  EXPECT_EQ(GetOlhDocPath(), dir + "/host");
  EXPECT_EQ(SetOlhDocPath(nullptr), 1);
  EXPECT_EQ(GetOlhDocPath(), root);
}

// There the small form of "I" is another letter.
TEST_F(Wrappers, ATurkishHostFindsTopicsAndDisplayTypes) {
  const std::string locale = "localedef -i tr_TR -f ISO-8859-9 " + dir + "/tr_TR >/dev/null 2>&1";
  set("LOCPATH", dir);
  if (std::system(locale.c_str()) != 0 || std::setlocale(LC_ALL, "tr_TR") == nullptr) GTEST_SKIP() << locale;
  ASSERT_NE(std::tolower('I'), 'i');
  set("QEL_OLH_DISPLAY_TYPE", "TOPIC");
  write("guide/QELdata/QELAllData.js", "QELAddTopic([\"Intro\",\"intro.htm\"]);\n");
  EXPECT_EQ(FindHtmlTopic(("file://" + dir + "/guide/index.htm").c_str(), "intro", nullptr), 1);
  EXPECT_EQ(GetOlhDisplayType(), OLH_DISPLAY_TOPIC);
}

}  // namespace
