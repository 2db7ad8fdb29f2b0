#include "dmerge_scene.h"

namespace {

class DocumentLists : public olh_test::DmergeScene {
 protected:
  DocumentLists() {
    make("htmldocs/QEL/lib");
    put("pdfdocs/a.pdf", "%PDF");
    put("pdfdocs/sub/b.pdf", "%PDF");
  }
};

TEST_F(DocumentLists, Items) {
  const std::pair<const char*, const char*> cases[] = {
      // A line, and its title if it gives one.
      {"List.fAddItem( \"A\", \"a\" );", "A"},
      {"x; List.fAddItem(\"A 'b'\",\"a\",\"pdf\") // later", "A 'b'"},
      {"  // List.fAddItem( \"A\", \"a\" );", nullptr},
      {"x(\"http://h\"); List.fAddItem( \"A\", \"a\" );", nullptr},
      {"\"x\" List.fAddItem( \"A\", \"a\" );", "A"},
      {"List.fAddItem( \"A\" );", nullptr},
      {"List.fAddItem( \"A\", \"sub/b\" );", nullptr},
      {"List.fAddItem( \"A\", \"a.pdf\" );", nullptr},
      {"Entry.fAddItem( \"A\", \"a\" );", nullptr},
  };
  for (const auto& [line, title] : cases) {
    clearpdfTitlesList();
    put("tomedecks/p_td/js/doclist.js", std::string(line) + "\n");
    EXPECT_EQ(generateDocLists(root.data()), DMERGE_RESULT_OK);
    ASSERT_EQ(numpdfTitlesEntries, title == nullptr ? 0 : 1) << line;
    if (title == nullptr) continue;
    EXPECT_STREQ(pdfTitlesHead->title, title);
    EXPECT_STREQ(pdfTitlesHead->docName, "a");
    EXPECT_STREQ(pdfTitlesHead->type, "pdf");
  }
}

TEST_F(DocumentLists, TheTitleReadLastIsTaken) {
  put("tomedecks/qel_td/js/doclist.js", "List.fAddItem( \"First\", \"a\" );\nList.fAddItem( \"Last\", \"a\" );\n");
  EXPECT_EQ(generateDocLists(root.data()), DMERGE_RESULT_OK);
  EXPECT_EQ(numpdfTitlesEntries, 2);
  make("tomedecks/qel_td/js");
  EXPECT_EQ(extractLibList(root.data()), DMERGE_RESULT_OK);
  EXPECT_STREQ(lleHead->title, "Last");
}

TEST_F(DocumentLists, EveryEntryIsLookedAt) {
  for (const char* script : {"tomedecks/plain/js/doclist.js", "tomedecks/js/doclist.js", "js/doclist.js"})
    put(script, "List.fAddItem( \"A\", \"a\" );\n");
  EXPECT_EQ(generateDocLists(root.data()), DMERGE_RESULT_OK);
  EXPECT_EQ(numpdfTitlesEntries, 3) << "of a directory of any name, of \".\" and of \"..\"";
}

TEST_F(DocumentLists, PortalDirectoryThatCannotBeListed) {
  EXPECT_EQ(generateDocLists(root.data()), DMERGE_RESULT_OK) << "none at all is fine";
  put("tomedecks", "a file");
  EXPECT_EQ(printed_with(DMERGE_RESULT_UNLISTABLE, [&] { return generateDocLists(root.data()); }),
            "ERROR: generateDocLists: unable to open @/docs/tomedecks\n");
}

}  // namespace
