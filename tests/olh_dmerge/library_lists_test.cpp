#include <algorithm>

#include "dmerge_scene.h"
#include "registries.h"

namespace {

class LibraryLists : public olh_test::DmergeScene {
 protected:
  LibraryLists() { make("htmldocs/QEL/lib"); }
  void expect_entries(const std::string& expected) {
    EXPECT_EQ(extractLibList(root.data()), DMERGE_RESULT_OK);
    EXPECT_EQ(entries(), expected);
  }
  // The entries as "title|name|type;", the one added last first.
  static std::string entries() {
    std::string text;
    for (const LibListEntry* entry = lleHead; entry != nullptr; entry = entry->next)
      text += std::string(entry->title) + "|" + (entry->docName == nullptr ? "-" : entry->docName) + "|" +
              (entry->type == nullptr ? "both" : entry->type) + ";";
    return text;
  }
};

TEST_F(LibraryLists, NamesOfPdfs) {
  const std::pair<std::string, const char*> cases[] = {
      {"a.pdf", "a.pdf|a|pdf;"},
      {"A.PdF", "A.PdF|A|pdf;"},
      {"a.b.pdf", "a.b.pdf|a.b|pdf;"},
      {".pdf", ""},
      {"_bk_a.pdf", ""},
      {"a_bk_.pdf", "a_bk_.pdf|a_bk_|pdf;"},
      {"a.pdfx", ""},
      {"apdf", ""},
      {"a.pdf.", ""},
  };
  for (const auto& [file, entry] : cases) {
    clearLibList();
    const std::string path = put("pdfdocs/" + file, "%PDF");
    expect_entries(entry);
    std::filesystem::remove(path);
  }
}

TEST_F(LibraryLists, BothForms) {
  put("htmldocs/a/QELdata/QELAllData.js", "QELAddBookVar(\"DocTitle\",\"A\");");
  put("pdfdocs/a.pdf", "pdf:Title='Other'");
  put("pdfdocs/a.PDF", "pdf:Title='Other'");
  put("pdfdocs/b.pdf", "pdf:Title='B'");
  put("pdfdocs/b.PDF", "pdf:Title='B'");
  expect_entries("B|b|pdf;A|a|both;");
  EXPECT_EQ(numLleEntries, 2);
}

// Whatever type it has, and even one that is not from malloc.
TEST_F(LibraryLists, AnEntryThatWasThereBeforeExistsInBothForms) {
  char literal[] = "pdf";
  olh::add_document("B", "b", olh::kPdfType);
  olh::discard(lleHead->type);
  lleHead->type = literal;
  put("pdfdocs/b.pdf", "pdf:Title='Other'");
  put("pdfdocs/b.PDF", "pdf:Title='Other'");
  EXPECT_EQ(extractLibList(root.data()), DMERGE_RESULT_OK);
  EXPECT_EQ(entries(), "B|b|both;");
}

// The list is made at its head.
TEST_F(LibraryLists, DocumentsComeInTheOrderOfTheDirectory) {
  for (const std::string name : {"m", "a", "z", "q", "c", "x", "b"}) {
    put("htmldocs/" + name + "/QELdata/QELAllData.js", "");
    put("pdfdocs/p" + name + ".pdf", "");
  }
  std::string expected;
  for (const auto& entry : std::filesystem::directory_iterator(in_root("htmldocs"))) {
    const std::string name = entry.path().filename();
    if (name != "QEL") expected.insert(0, std::string(name).append("|").append(name).append("|html;"));
  }
  for (const auto& entry : std::filesystem::directory_iterator(in_root("pdfdocs")))
    expected.insert(0, entry.path().filename().string().append("|").append(entry.path().stem()).append("|pdf;"));
  expect_entries(expected);
}

TEST_F(LibraryLists, WhatCannotBeReadStandsInNobodysWay) {
  make("htmldocs/b/QELdata");
  std::filesystem::create_symlink("/proc/self/mem",
                                  in_root("htmldocs/b/QELdata/QELAllData.js"));  // opens, fails to read
  make("pdfdocs/a.pdf");
  put("pdfdocs/a.PDF", "pdf:Title='A'");
  expect_entries("A|a|pdf;");
}

// A backslash in a name counts as a slash; one in front must not lead out of the root.
TEST_F(LibraryLists, ABackslashLeadsNoDocumentOutOfTheRoot) {
  write("outside/QELdata/QELAllData.js", "QELAddBookVar(\"DocTitle\",\"A\");");
  write("outside.pdf", "pdf:Title='B'");
  std::string outside = std::filesystem::path(root).parent_path() / "outside";
  std::replace(outside.begin(), outside.end(), '/', '\\');
  make("htmldocs/" + outside);
  put("pdfdocs/" + outside + ".pdf", "pdf:Title='C'");
  put("htmldocs/a/b/QELdata/QELAllData.js", "QELAddBookVar(\"DocTitle\",\"D\");");
  make("htmldocs/a\\b");
  expect_entries("D|a\\b|html;");
}

TEST_F(LibraryLists, SortedByBytesAndEachNameOnce) {
  olh::add_document("z", "late", olh::kHtmlType);
  olh::add_document("Z", "early", olh::kPdfType);
  olh::add_document("b", "", olh::kPdfType);
  char twice[] = "twice";  // not from malloc: it is not freed
  olh::discard(lleHead->docName);
  lleHead->docName = twice;
  olh::add_document("a", "twice", olh::kHtmlType);
  olh::add_document("\xc3\x84", "above", olh::kHtmlType);
  make("tomedecks/qel_td/js");
  EXPECT_EQ(writeLibList(root.c_str()), DMERGE_RESULT_OK);
  const std::string list = get("tomedecks/qel_td/js/LibList.js");
  EXPECT_EQ(list.substr(list.find("   m")),
            "   mLibraryList.push([\"Z\",\"early\",\"pdf\"] );\n"
            "   mLibraryList.push([\"a\",\"twice\",\"html\"] );\n"
            "   mLibraryList.push([\"z\",\"late\",\"html\"] );\n"
            "   mLibraryList.push([\"\xc3\x84\",\"above\",\"html\"] );\n");
  EXPECT_NE(entries().find("b|-|pdf;"), std::string::npos) << "the later one has lost its name";
  EXPECT_EQ(numLleEntries, 5);
}

TEST_F(LibraryLists, WithoutPortalsOnlyTheirOwnList) {
  put("tomedecks_template", "");
  EXPECT_EQ(writeLibList(root.c_str()), DMERGE_RESULT_OK);
  EXPECT_EQ(numRegisteredFiles, 1);
  make("tomedecks/qel_td");
  EXPECT_EQ(printed_with(DMERGE_RESULT_UNWRITABLE, [&] { return writeLibList(root.c_str()); }),
            "ERROR: writeLibList: unable to open @/docs/tomedecks/qel_td/js/LibList.js\n");
}

TEST_F(LibraryLists, BasicPage) {
  make("tomedecks/qel_td/js");
  olh::add_document("T", "d", olh::kHtmlType);
  char given_away[] = "d";  // not from malloc: the later entry of this name loses it, and has no row
  olh::add_document("U", "", olh::kHtmlType);
  olh::discard(lleHead->docName);
  lleHead->docName = given_away;
  const std::string rows =
      "<tr><td>T</td><td class=\"right\">\n"
      "<a href=\"../htmldocs/d/index.htm\" class=\"doctagging\" target=\"_blank\">HTM</a>\n"
      "</td></tr>\n";
  const std::string list_mark = "<!-- Insert document list here -->";
  const std::pair<std::string, std::string> cases[] = {
      {"a\r\nb", "a\r\nb"},
      {"x" + list_mark + "y\n" + list_mark, rows + rows},
      {"a\n <!-- Insert release name here -->\nb\n", "a\nb\n"},
      {"<!-- insert document list here -->\n", "<!-- insert document list here -->\n"},
  };
  for (const auto& [page_template, page] : cases) {
    put("tomedecks/common/html/basic.htm", page_template);
    EXPECT_EQ(writeLibList(root.c_str()), DMERGE_RESULT_OK);
    EXPECT_EQ(get("tomedecks/basic.htm"), page);
  }
}

}  // namespace
