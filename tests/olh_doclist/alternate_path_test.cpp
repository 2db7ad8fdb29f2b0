#include "olh/support.h"
#include "path_scene.h"

namespace {

using namespace olh_test;

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
