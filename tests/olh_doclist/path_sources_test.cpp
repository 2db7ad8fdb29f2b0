#include "http_server.h"
#include "olh/support.h"
#include "path_scene.h"

namespace {

using namespace olh_test;

class PathSources : public PathScene {
 protected:
  int set_path(const std::string& host_paths) { return locator.SetOlhDocPath(host_paths.c_str()); }
};

TEST_F(PathSources, PrecedenceIsOverrideHostEnvironment) {
  for (const char* const name : {"o", "host", "d1", "d2", "p", "trv/docs", "qel/home/docs", "qel/home/shared",
                                 "qel/home/doc", "qel/docs", "s"})
    make_root(name);
  set("QEL_OVERRIDE_DOC_PATH", at("o/"));
  set("QEL_DOC_PATH", at("d1:") + at("missing:") + at("d2"));
  set("QEL_PRODUCT_DOC_PATH", dir + "\\p");
  set("TRV_HOME", at("trv/program"));
  set("QEL_HOME", at("qel/home/"));
  set("OLH_SYSTEM_DOC_PATH", at("s:") + at("d1:") + at("o"));
  const std::string others = " @/trv/docs @/qel/home/docs @/qel/home/shared @/qel/home/doc @/qel/docs @/s";

  locator.AddEnvironmentVariables();
  EXPECT_EQ(paths(), "@/o @/d1 @/d2 @/p" + others);
  EXPECT_EQ(set_path(at("host:") + at("p")), 1);
  EXPECT_EQ(paths(), "@/o @/host @/p @/d1 @/d2" + others);
  EXPECT_EQ(set_path(""), 1);
  EXPECT_EQ(paths(), "@/o @/d1 @/d2 @/p" + others);
}

TEST_F(PathSources, HomeVariablesAreCutAtTheirLastSlashOnly) {
  make_root("trv/home/docs");
  make_root("qel/docs");
  set("TRV_HOME", at("trv/home/"));
  set("QEL_HOME", at("qel\\home\\"));
  locator.AddEnvironmentVariables();
  EXPECT_EQ(paths(), "@/trv/home/docs @/qel/docs");
}

// One is taken from the value, and one from its last root.
TEST_F(PathSources, NoServerIsAskedWithTheSlashesBehindAVariable) {
  const HttpServer server({"/d/htmldocs/qelhelp.htm"});
  set("QEL_DOC_PATH", server.url("/d//"));
  locator.AddEnvironmentVariables();
  EXPECT_EQ(paths(), server.url("/d"));
}

TEST_F(PathSources, EnvironmentIsReadOnce) {
  for (const char* const name : {"a", "b"}) {
    set("QEL_DOC_PATH", make_root(name));
    locator.AddEnvironmentVariables();
  }
  EXPECT_EQ(paths(), "@/a");
  EXPECT_EQ(locator.mbEnvironmentAdded, 1);
  EXPECT_EQ(locator.mbAddingEnvironment, 0);
}

TEST_F(PathSources, LastPathIsWhatTheHostGave) {
  set("QEL_DOC_PATH", make_root("a"));
  locator.AddEnvironmentVariables();
  EXPECT_STREQ(locator.mLastDocPath, "");
  set_path(at("a/:nowhere"));
  EXPECT_EQ(locator.mLastDocPath, at("a/:nowhere"));
  EXPECT_EQ(locator.mCurrentDocPath, at("a"));
  EXPECT_EQ(locator.mbEnvironmentAdded, 0);
  locator.mbEnvironmentAdded = 2;
  locator.AddEnvironmentVariables();
  EXPECT_STREQ(locator.mLastDocPath, "") << "any other value of the flag empties it, and does no more";
  EXPECT_EQ(paths(), "@/a");
  set_path(at("a"));
  set_path("");
  EXPECT_STREQ(locator.mLastDocPath, "");
  EXPECT_STREQ(locator.mCurrentDocPath, "");
}

TEST_F(PathSources, RootNamedTwiceInARowEndsTheCall) {
  for (const char* const name : {"a", "b", "e"}) make_root(name);
  set("QEL_DOC_PATH", at("e"));
  locator.AddEnvironmentVariables();
  EXPECT_EQ(set_path(at("a:") + at("a:") + at("b")), 1);
  EXPECT_EQ(paths(), "@/a");
  EXPECT_EQ(set_path(at("a:") + at("b:") + at("a")), 1);
  EXPECT_EQ(paths(), "@/a @/b @/e");
}

TEST_F(PathSources, AlternatesLeadTheRootThatNamesThem) {
  for (const char* const name : {"first", "root", "alternate", "unreached"}) make_root(name);
  write("root/qel_doc_options.ini", "QEL_ALT_DOC_PATH=\"" + at("alternate:") + at("missing") +
                                        "\"\nQEL_HTML_BROWSER=\"" + make_program("tree/browser") + "\"\n");
  // The alternates of an alternate are not looked for.
  write("alternate/qel_doc_options.ini", "QEL_ALT_DOC_PATH=\"" + at("unreached") + "\"\n");
  set_path(at("first:") + at("root"));
  EXPECT_EQ(roots(),
            (Roots{{"@/first"}, {"@/alternate", "@/tree/browser", "", "@/root"}, {"@/root", "@/tree/browser"}}));
}

TEST_F(PathSources, RootThatIsItsOwnAlternateHasNoParent) {
  write("root/qel_doc_options.ini", "QEL_ALT_DOC_PATH=\"" + at("root:") + make_root("other") + "\"\n");
  set_path(make_root("root"));
  EXPECT_EQ(roots(), (Roots{{"@/root"}, {"@/other", "", "", "@/root"}}));
}

TEST_F(PathSources, EarlierPlainMentionGainsTheOverrideOfALaterOne) {
  const std::string plain = make_root("plain");
  const std::string reader = make_program("tree/reader");
  write("root/qel_doc_options.ini", "QEL_ALT_DOC_PATH=\"" + plain + "\"\nqel_pdf_reader = " + reader + "\n");
  set_path(plain + ":" + make_root("root"));
  EXPECT_EQ(roots(), (Roots{{"@/plain", "", "@/tree/reader"}, {"@/root", "", "@/tree/reader"}}));
}

TEST_F(PathSources, UnreadableOptionsFileLeavesTheRoot) {
  make_directory("root/qel_doc_options.ini");
  set_path(at("root"));
  EXPECT_EQ(roots(), Roots{{"@/root"}});
}

TEST_F(PathSources, TooLongStringChangesNothing) {
  const std::string root = make_root("a");
  set_path(root);
  EXPECT_EQ(set_path(root + "/" + std::string(OLH_BUFFER_SIZE, 'x')), 1);
  EXPECT_EQ(paths(), "@/a");
  EXPECT_EQ(locator.mLastDocPath, root);
  const std::string just_fits = root + std::string(OLH_BUFFER_SIZE - 1 - root.size(), '/');
  EXPECT_EQ(set_path(just_fits), 1);
  EXPECT_EQ(locator.mLastDocPath, just_fits);
}

TEST_F(PathSources, OwnStringsMayBeGivenBack) {
  set_path(make_root("a") + ":" + make_root("b"));
  locator.SetOlhDocPath(locator.mLastDocPath);
  EXPECT_EQ(paths(), "@/a @/b");
  locator.SetOlhDocPath(locator.mDocPathList->path);
  EXPECT_EQ(paths(), "@/a");
}

class AlternatePath : public PathScene {
 protected:
  AlternatePath() {
    for (const char* const name : {"a", "b", "env", "host"}) make_root(name);
    set("QEL_DOC_PATH", at("env"));
  }
  int set_alternate(const std::string& alternate) { return locator.SetAltDocPath(alternate.c_str()); }
  std::string stored() {
    char alternates[OLH_BUFFER_SIZE] = "untouched";
    EXPECT_EQ(locator.GetAltDocPath(alternates), 0);
    return shortened(alternates);
  }
};

TEST_F(AlternatePath, AcceptedRootsAreStoredAndLead) {
  locator.AddEnvironmentVariables();
  EXPECT_EQ(set_alternate(at("a") + ":/nonexistent:" + at("b")), 4);
  EXPECT_EQ(paths(), "@/a @/b @/env");
  EXPECT_NE(shortened(read_file(at("env/qel_doc_options.ini"))).find(" QEL_ALT_DOC_PATH=\"@/a:@/b"),
            std::string::npos);
  EXPECT_EQ(stored(), "@/a:@/b");
}

// The rebuild empties what it is rebuilt from.
TEST_F(AlternatePath, TheHostsRootsOutliveTwoChanges) {
  locator.AddEnvironmentVariables();
  locator.SetOlhDocPath(at("host").c_str());
  EXPECT_EQ(set_alternate(at("a")), 0);
  EXPECT_EQ(set_alternate(at("b")), 0);
  EXPECT_EQ(paths(), "@/b @/host @/env");
  EXPECT_EQ(read_file(at("a/qel_doc_options.ini")), "") << "the file is that of the tree, not of its alternate";
}

TEST_F(AlternatePath, TheNewFrontTakesOverTheFirstEntry) {
  write("env/qel_doc_options.ini", "QEL_HTML_BROWSER=\"" + make_program("bin/browser") + "\"\n");
  locator.AddEnvironmentVariables();
  EXPECT_EQ(set_alternate(at("a") + ":" + at("env")), 0);
  EXPECT_EQ(roots(), (Roots{{"@/a", "@/bin/browser", "", "@/env"}, {"@/env", "@/bin/browser", "", ""}}));
}

TEST_F(AlternatePath, WhatCannotBeWrittenIsInUseAllTheSame) {
  locator.AddEnvironmentVariables();
  make_directory("env/qel_doc_options.ini.new");
  EXPECT_EQ(set_alternate(at("a")), 5);
  EXPECT_EQ(paths(), "@/a @/env");
  EXPECT_EQ(stored(), "");
}

TEST_F(AlternatePath, WithoutAnyRoot) {
  EXPECT_EQ(set_alternate(at("a")), 4);
  EXPECT_EQ(stored(), "");
  locator.AddEnvironmentVariables();
  unset("QEL_DOC_PATH");
  EXPECT_EQ(set_alternate(at("a")), 0);
  EXPECT_EQ(roots(), Roots{{"@/a"}});
}

}  // namespace
