#include "olh/support.h"
#include "path_texts.h"
#include "scratch.h"

namespace {

using olh_test::paths_of;
using olh_test::Root;
using olh_test::roots_of;

class AlternatePath : public olh_test::Scratch {
 protected:
  AlternatePath() {
    for (const char* const name : {"a", "b", "env", "host"}) make_root(name);
    set("QEL_DOC_PATH", dir + "/env");
  }
  std::string stored() {
    char paths[OLH_BUFFER_SIZE] = "untouched";
    EXPECT_EQ(locator.GetAltDocPath(paths), 0);
    return paths;
  }
  std::string at(const std::string& name) const { return dir + "/" + name; }

  olh_docList locator;
};

TEST_F(AlternatePath, AcceptedRootsAreStoredAndLead) {
  locator.AddEnvironmentVariables();
  EXPECT_EQ(locator.SetAltDocPath((at("a") + ":/nonexistent:" + at("b")).c_str()), 4);
  EXPECT_EQ(paths_of(locator.mDocPathList), at("a") + " " + at("b") + " " + at("env"));
  EXPECT_NE(olh_test::read_file(at("env/qel_doc_options.ini")).find(" QEL_ALT_DOC_PATH=\"" + at("a") + ":" + at("b")),
            std::string::npos);
  EXPECT_EQ(stored(), at("a") + ":" + at("b"));
}

// The rebuild empties what it is rebuilt from.
TEST_F(AlternatePath, TheHostsRootsOutliveTwoChanges) {
  locator.AddEnvironmentVariables();
  locator.SetOlhDocPath(at("host").c_str());
  EXPECT_EQ(locator.SetAltDocPath(at("a").c_str()), 0);
  EXPECT_EQ(locator.SetAltDocPath(at("b").c_str()), 0);
  EXPECT_EQ(paths_of(locator.mDocPathList), at("b") + " " + at("host") + " " + at("env"));
  EXPECT_EQ(olh_test::read_file(at("a/qel_doc_options.ini")), "")
      << "the file is that of the tree, not of its alternate";
}

TEST_F(AlternatePath, TheNewFrontTakesOverTheFirstEntry) {
  const std::string browser = make_program("bin/browser");
  write("env/qel_doc_options.ini", "QEL_HTML_BROWSER=\"" + browser + "\"\n");
  locator.AddEnvironmentVariables();
  EXPECT_EQ(locator.SetAltDocPath((at("a") + ":" + at("env")).c_str()), 0);
  const std::vector<Root> expected = {{at("a"), browser, "", at("env")}, {at("env"), browser, "", ""}};
  EXPECT_EQ(roots_of(locator.mDocPathList), expected);
}

TEST_F(AlternatePath, WhatCannotBeWrittenIsInUseAllTheSame) {
  locator.AddEnvironmentVariables();
  make_directory("env/qel_doc_options.ini.new");
  EXPECT_EQ(locator.SetAltDocPath(at("a").c_str()), 5);
  EXPECT_EQ(paths_of(locator.mDocPathList), at("a") + " " + at("env"));
  EXPECT_EQ(stored(), "");
}

TEST_F(AlternatePath, WithoutAnyRoot) {
  EXPECT_EQ(locator.SetAltDocPath(at("a").c_str()), 4);
  EXPECT_EQ(stored(), "");
  locator.AddEnvironmentVariables();
  unset("QEL_DOC_PATH");
  EXPECT_EQ(locator.SetAltDocPath(at("a").c_str()), 0);
  EXPECT_EQ(roots_of(locator.mDocPathList), std::vector<Root>{{at("a")}});
}

TEST_F(AlternatePath, EveryEntryIsTold) {
  locator.AddEnvironmentVariables();
  set("OLH_DEBUG", "1");
  setDebugVariable();
  const std::string said = olh_test::standard_error_of([this] { locator.SetAltDocPath(at("a").c_str()); });
  const std::string line = "olh_docList::SetAltDocPath: docPath: path: ";
  EXPECT_NE(said.find(line + at("a") + " html: (default) pdf: (default) parent: " + at("env") + "\n"),
            std::string::npos)
      << said;
}

}  // namespace
