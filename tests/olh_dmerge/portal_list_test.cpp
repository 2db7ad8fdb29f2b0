#include <cstdlib>

#include "dmerge_scene.h"

namespace {

constexpr char kHeader[] =
    "// ----- auto-generated list of available tomedecks -----\n"
    "mbUseInstalledTdks = true;\n"
    "\n";

class PortalList : public olh_test::DmergeScene {
 protected:
  PortalList() {
    make("tomedecks/qel_td/js");
    put("tomedecks/here_td/js/doclist.js", "mTomeDeckName = \"Here\";\n");
  }

  // The installed list for a source list, without its header.
  std::string installed(const std::string& source) {
    put("tomedecks/qel_td/js/tdklist.js", source);
    EXPECT_EQ(generateTdInstalledList(root.data()), DMERGE_RESULT_OK);
    const std::string text = get("tomedecks/qel_td/js/tdklist_installed.js");
    EXPECT_TRUE(text.starts_with(kHeader)) << text;
    return text.substr(sizeof kHeader - 1);
  }
};

TEST_F(PortalList, LinesOfTheSource) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"comments stay", "//List.fAddItem( \"A\", \"no_td\" );\n", "//List.fAddItem( \"A\", \"no_td\" );\n"},
      {"but only at the first character", " //List.fAddItem( \"A\", \"no_td\" );\n", ""},
      {"an installed portal stays", "List.fAddItem( \"A\", \"here_td\" );", "List.fAddItem( \"A\", \"here_td\" );\n"},
      {"a missing one goes", "List.fAddItem( \"A\", \"no_td\" );\n", ""},
      {"a link names the portal behind tomedeck=", "List.fAddItem(\"A\",\"x?tomedeck=here_td\");\n",
       "List.fAddItem(\"A\",\"x?tomedeck=here_td\");\n"},
      {"all of the rest is its name", "List.fAddItem(\"A\",\"x?tomedeck=here_td&tab=b\");\n", ""},
      {"fewer arguments are no portal", "List.fAddItem( \"A\", b );\n", "List.fAddItem( \"A\", b );\n"},
      {"a line ends at its first line end", "a\rb\r\n\r\nc", "a\n\nc\n"},
      {"an item in a list line is an item", "Entry.fAddList(List.fAddItem(\"A\",\"no_td\"))\n", ""},
  };
  for (const auto& [what, source, expected] : cases) EXPECT_EQ(installed(source), expected) << what;
}

TEST_F(PortalList, UnnamedPortalsStandBeforeTheFirstList) {
  put("tomedecks/gone_td/readme", "no doclist.js");
  put("tomedecks/silent_td/js/doclist.js", "var a;\n");
  put("tomedecks/noportal/js/doclist.js", "mTomeDeckName = \"No\";\n");
  put("tomedecks/qel_td/js/doclist.js", "mTomeDeckName = \"Main\";\n");
  std::string text;
  const std::string said =
      printed_by([&] { text = installed("a\nEntry.fAddList( List );\nEntry.fAddList( B );\n"); });
  EXPECT_EQ(text, "a\nList.fAddItem( \"Here\", \"here_td\" );\nEntry.fAddList( List );\nEntry.fAddList( B );\n");
  EXPECT_EQ(said,
            "ERROR: Unable to open @/docs/tomedecks/gone_td/js/doclist.js"
            " in order to determine title. Skipping this add-in...\n");
}

TEST_F(PortalList, AFoundPortalIsNotAddedAgain) {
  const char* dropped = "List.fAddItem( \"Other name\", \"x?tomedeck=here_td\" );\nEntry.fAddList( List );\n";
  EXPECT_EQ(installed(dropped), dropped);
  EXPECT_EQ(inFoundList("here_td"), 1);
  EXPECT_EQ(inFoundList("here"), 0);
  EXPECT_EQ(installed("Entry.fAddList( List );\n"), "Entry.fAddList( List );\n") << "found by the call before";
}

TEST_F(PortalList, ABackslashInANameIsASlashOnEveryRoad) {
  const std::string item = "List.fAddItem( \"Deep\", \"x\\y_td\" );\n";
  make("tomedecks/x\\y_td");
  EXPECT_EQ(installed(item), "");
  put("tomedecks/x/y_td/js/doclist.js", "mTomeDeckName = \"Deep\";\n");
  EXPECT_EQ(installed(item), item);
  dmerge_init();
  EXPECT_NE(installed("Entry.fAddList( List );\n").find(item), std::string::npos);
}

TEST_F(PortalList, ARootMayBeSpelledWithBackslashes) {
  put("tomedecks/qel_td/js/tdklist.js", "Entry.fAddList( List );\n");
  std::string odd = root;
  odd.replace(odd.rfind('/'), 1, "\\");
  EXPECT_EQ(generateTdInstalledList(odd.data()), DMERGE_RESULT_OK);
  EXPECT_EQ(get("tomedecks/qel_td/js/tdklist_installed.js"),
            std::string(kHeader) + "List.fAddItem( \"Here\", \"here_td\" );\nEntry.fAddList( List );\n");
}

TEST_F(PortalList, ReleaseName) {
  const std::pair<const char*, const char*> cases[] = {
      {"mReleaseName = \"One\";\nx = \"Two\"; // mReleaseName\n", "Two"},
      {"mReleaseName = \"One\";\nmReleaseName = 2;\n", "One"},
      {"// mReleaseName = \"Comment\"\nmReleaseName = \"\";\n", ""},
      {"Entry.fAddList( mReleaseName = \"List line\" );\n", nullptr},
  };
  for (const auto& [source, name] : cases) {
    dmerge_init();
    installed(source);
    EXPECT_STREQ(releaseName, name) << source;
  }
}

TEST_F(PortalList, DefaultSource) {
  ASSERT_EQ(generateTdInstalledList(root.data()), DMERGE_RESULT_OK);
  const std::string source = get("tomedecks/qel_td/js/tdklist.js");
  EXPECT_EQ(source,
            "var Entry;\nvar List;\n\nTDTab_TomeDecks.fVisible( true );\n\n"
            "Entry = new TabEntry_Object( \"TomeDecks\" );\nList = new List_Object(\"tomedeck\");\n"
            "Entry.fAddList( List );\nTDTab_TomeDecks.fAddEntry( Entry );\n");
  std::string expected = kHeader + source;
  expected.insert(expected.find("Entry.fAddList"), "List.fAddItem( \"Here\", \"here_td\" );\n");
  EXPECT_EQ(get("tomedecks/qel_td/js/tdklist_installed.js"), expected);
}

// In the place of the target, or of the file beside it through which it is written: no record stays.
TEST_F(PortalList, Failures) {
  put("tomedecks/gone_td/readme", "no doclist.js");
  put("tomedecks/qel_td/js/tdklist.js",
      "mReleaseName = \"One\";\nList.fAddItem(\"A\",\"a_td\");\nEntry.fAddList( List );\n");
  const std::string target = in_root("tomedecks/qel_td/js/tdklist_installed.js");
  const std::string message =
      "dmerge: error: generateTdInstalledList: tgtPath " + shortened(target) + " not writeable\n";
  const auto failure = [&] {
    return printed_with(DMERGE_RESULT_FAILED, [&] { return generateTdInstalledList(root.data()); });
  };
  make("tomedecks/qel_td/js/tdklist_installed.js");
  EXPECT_EQ(failure(), message) << "before a portal is looked at";
  std::filesystem::rename(target, target + ".new");
  make("tomedecks/qel_td/js/tdklist_installed.js.new/x");
  EXPECT_TRUE(failure().ends_with(message));
  EXPECT_TRUE(foundHandleListHead == nullptr && releaseName == nullptr);
  std::filesystem::remove(in_root("tomedecks/qel_td/js/tdklist.js"));
  make("tomedecks/qel_td/js/tdklist.js");
  EXPECT_EQ(failure(),
            "dmerge: error: generateTdInstalledList: srcPath @/docs/tomedecks/qel_td/js/tdklist.js not readable\n");
}

TEST_F(PortalList, TitleOfAPortal) {
  const std::pair<const char*, const char*> cases[] = {
      {"a\nvar mTomeDeckName = \"A 'b'\"; \"c\"\nmTomeDeckName = \"Later\";\n", "A 'b'"},
      {"mTomeDeckName=\"No blank\";\nmTomeDeckName = \"Yes\"", "Yes"},
      {"x(\"first\"); mTomeDeckName = \"second\";\n", "first"},
      {"mTomeDeckName = \"\";\n", ""},
      {"mTomeDeckName = \"open\n", nullptr},
      {"", nullptr},
  };
  char portal[] = "p_td";
  for (const auto& [script, title] : cases) {
    put("tomedecks/p_td/js/doclist.js", script);
    char* found = getTitle(root.data(), portal);
    EXPECT_STREQ(found, title) << script;
    std::free(found);
  }
}

}  // namespace
