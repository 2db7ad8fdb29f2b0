#include "olh/support.h"
#include "path_texts.h"
#include "scratch.h"

namespace {

using olh_test::paths_of;
using olh_test::Root;
using olh_test::roots_of;

class PathSources : public olh_test::Scratch {
 protected:
  int set_path(const std::string& paths) { return locator.SetOlhDocPath(paths.c_str()); }

  // Names below the directory, as a search path with blanks.
  std::string at(std::vector<std::string> names) const {
    std::string paths;
    for (const std::string& name : names) paths += (paths.empty() ? "" : " ") + dir + "/" + name;
    return paths;
  }

  olh_docList locator;
};

TEST_F(PathSources, PrecedenceIsOverrideHostEnvironment) {
  for (const char* const name : {"o", "host", "d1", "d2", "p", "trv/docs", "qel/home/docs", "qel/home/shared",
                                 "qel/home/doc", "qel/docs", "s"})
    make_root(name);
  set("QEL_OVERRIDE_DOC_PATH", dir + "/o/");
  set("QEL_DOC_PATH", dir + "/d1:" + dir + "/missing:" + dir + "/d2");
  set("QEL_PRODUCT_DOC_PATH", dir + "\\p");
  set("TRV_HOME", dir + "/trv/program");
  set("QEL_HOME", dir + "/qel/home/");
  set("OLH_SYSTEM_DOC_PATH", dir + "/s:" + dir + "/d1");
  const std::vector<std::string> environment = {
      "d1", "d2", "p", "trv/docs", "qel/home/docs", "qel/home/shared", "qel/home/doc", "qel/docs", "s"};

  locator.AddEnvironmentVariables();
  EXPECT_EQ(paths_of(locator.mDocPathList), at({"o"}) + " " + at(environment));
  EXPECT_EQ(set_path(dir + "/host:" + dir + "/p"), 1);
  EXPECT_EQ(paths_of(locator.mDocPathList), at({"o", "host", "p", "d1", "d2", "trv/docs", "qel/home/docs",
                                                "qel/home/shared", "qel/home/doc", "qel/docs", "s"}));
  EXPECT_EQ(set_path(""), 1);
  EXPECT_EQ(paths_of(locator.mDocPathList), at({"o"}) + " " + at(environment));
}

TEST_F(PathSources, HomeVariablesAreCutAtTheirLastSlashOnly) {
  make_root("trv/home/docs");
  make_root("qel/docs");
  set("TRV_HOME", dir + "/trv/home/");
  set("QEL_HOME", dir + "/qel\\home\\");
  locator.AddEnvironmentVariables();
  EXPECT_EQ(paths_of(locator.mDocPathList), at({"trv/home/docs", "qel/docs"}));
}

TEST_F(PathSources, EnvironmentIsReadOnce) {
  make_root("a");
  make_root("b");
  set("QEL_DOC_PATH", dir + "/a");
  locator.AddEnvironmentVariables();
  set("QEL_DOC_PATH", dir + "/b");
  locator.AddEnvironmentVariables();
  EXPECT_EQ(paths_of(locator.mDocPathList), at({"a"}));
  EXPECT_EQ(locator.mbEnvironmentAdded, 1);
  EXPECT_EQ(locator.mbAddingEnvironment, 0);
}

TEST_F(PathSources, LastPathIsWhatTheHostGave) {
  make_root("a");
  set("QEL_DOC_PATH", dir + "/a");
  locator.AddEnvironmentVariables();
  EXPECT_STREQ(locator.mLastDocPath, "");
  set_path(dir + "/a/:nowhere");
  EXPECT_EQ(locator.mLastDocPath, dir + "/a/:nowhere");
  EXPECT_EQ(locator.mCurrentDocPath, dir + "/a");
  EXPECT_EQ(locator.mbEnvironmentAdded, 0);
  set_path("");
  EXPECT_STREQ(locator.mLastDocPath, "");
  EXPECT_STREQ(locator.mCurrentDocPath, "");
}

TEST_F(PathSources, RootNamedTwiceInARowEndsTheCall) {
  for (const char* const name : {"a", "b", "e"}) make_root(name);
  set("QEL_DOC_PATH", dir + "/e");
  locator.AddEnvironmentVariables();
  EXPECT_EQ(set_path(dir + "/a:" + dir + "/a:" + dir + "/b"), 1);
  EXPECT_EQ(paths_of(locator.mDocPathList), at({"a"}));
  EXPECT_EQ(set_path(dir + "/a:" + dir + "/b:" + dir + "/a"), 1);
  EXPECT_EQ(paths_of(locator.mDocPathList), at({"a", "b", "e"}));
}

TEST_F(PathSources, AlternatesLeadTheRootThatNamesThem) {
  const std::string first = make_root("first");
  const std::string root = make_root("root");
  const std::string alternate = make_root("alternate");
  make_root("unreached");
  const std::string browser = make_program("tree/browser");
  write("root/qel_doc_options.ini",
        "QEL_ALT_DOC_PATH=\"" + alternate + ":" + dir + "/missing\"\nQEL_HTML_BROWSER=\"" + browser + "\"\n");
  // The alternates of an alternate are not looked for.
  write("alternate/qel_doc_options.ini", "QEL_ALT_DOC_PATH=\"" + dir + "/unreached\"\n");
  set_path(first + ":" + root);
  EXPECT_EQ(roots_of(locator.mDocPathList),
            (std::vector<Root>{{first}, {alternate, browser, "", root}, {root, browser}}));
}

TEST_F(PathSources, RootThatIsItsOwnAlternateHasNoParent) {
  const std::string root = make_root("root");
  const std::string other = make_root("other");
  write("root/qel_doc_options.ini", "QEL_ALT_DOC_PATH=\"" + root + ":" + other + "\"\n");
  set_path(root);
  EXPECT_EQ(roots_of(locator.mDocPathList), (std::vector<Root>{{root}, {other, "", "", root}}));
}

TEST_F(PathSources, EarlierPlainMentionGainsTheOverrideOfALaterOne) {
  const std::string plain = make_root("plain");
  const std::string root = make_root("root");
  const std::string reader = make_program("tree/reader");
  write("root/qel_doc_options.ini", "QEL_ALT_DOC_PATH=\"" + plain + "\"\nqel_pdf_reader = " + reader + "\n");
  set_path(plain + ":" + root);
  EXPECT_EQ(roots_of(locator.mDocPathList), (std::vector<Root>{{plain, "", reader}, {root, "", reader}}));
}

TEST_F(PathSources, UnreadableOptionsFileLeavesTheRoot) {
  const std::string root = make_root("root");
  make_directory("root/qel_doc_options.ini");
  set_path(root);
  EXPECT_EQ(roots_of(locator.mDocPathList), (std::vector<Root>{{root}}));
}

TEST_F(PathSources, TooLongStringChangesNothing) {
  const std::string root = make_root("a");
  set_path(root);
  EXPECT_EQ(set_path(root + "/" + std::string(OLH_BUFFER_SIZE, 'x')), 1);
  EXPECT_EQ(paths_of(locator.mDocPathList), root);
  EXPECT_EQ(locator.mLastDocPath, root);
  const std::string just_fits = root + std::string(OLH_BUFFER_SIZE - 1 - root.size(), '/');
  EXPECT_EQ(set_path(just_fits), 1);
  EXPECT_EQ(locator.mLastDocPath, just_fits);
}

TEST_F(PathSources, OwnStringsMayBeGivenBack) {
  const std::string a = make_root("a");
  const std::string b = make_root("b");
  set_path(a + ":" + b);
  locator.SetOlhDocPath(locator.mLastDocPath);
  EXPECT_EQ(paths_of(locator.mDocPathList), a + " " + b);
  locator.SetOlhDocPath(locator.mDocPathList->path);
  EXPECT_EQ(paths_of(locator.mDocPathList), a);
}

}  // namespace
