#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "olh/support.h"
#include "path_scene.h"

namespace {

using namespace olh_test;

constexpr int kBrowser = 1;
constexpr int kReader = 2;
constexpr int kAltPath = 3;
constexpr int kUserFile = 1;
constexpr int kTreeFile = 2;

class OptionFile : public PathScene {
 protected:
  OptionFile() { locator.AddTail(list, root.data(), nullptr, nullptr, nullptr); }
  int set_user(int key, const std::string& value) { return locator.SetIniFile(key, value.c_str(), kUserFile); }
  int set_tree(int key, const std::string& value) { return locator.SetIniFile(key, value.c_str(), kTreeFile); }
  // The tree's file after a value was set in it.
  std::string edited(const std::string& old, int key, const std::string& value) {
    write("root/qel_doc_options.ini", old);
    EXPECT_EQ(set_tree(key, value), 0);
    return read_file(tree_file);
  }
  // "result paths, browser, reader" of a file, where the buffers hold "old" and two programs before; shortened.
  std::string read(std::string file) {
    char alternates[OLH_BUFFER_SIZE] = "old";
    char html[OLH_BUFFER_SIZE] = "/bin/sh";
    char pdf[OLH_BUFFER_SIZE] = "/bin/sh";
    const int result = locator.ReadIniFile(file.data(), alternates, html, pdf);
    return shortened(std::to_string(result) + " " + alternates + ", " + html + ", " + pdf);
  }

  std::string root = make_root("root");
  std::string user_file = home + "/.qel_viewer_config.ini";
  std::string tree_file = root + "/qel_doc_options.ini";
};

TEST_F(OptionFile, ANewFileIsAHeaderAndOneLine) {
  const std::string users = read_file(beside_program("resources/option_files/user.ini"));
  const std::string trees = read_file(beside_program("resources/option_files/tree.ini"));
  EXPECT_EQ(set_user(kBrowser, "/b"), 0);
  EXPECT_EQ(read_file(user_file), users + "\n QEL_HTML_BROWSER=\"/b\"\n");
  unlink(user_file.c_str());
  EXPECT_EQ(set_user(kReader, ""), 0);
  EXPECT_EQ(read_file(user_file), users + "\n QEL_PDF_READER=\"\"\n");
  EXPECT_EQ(set_tree(kAltPath, "/a:http://h/d"), 0);
  EXPECT_EQ(read_file(tree_file), trees + " QEL_ALT_DOC_PATH=\"/a:http://h/d\"\n");
}

TEST_F(OptionFile, OnlyTheKeysOwnLineChanges) {
  const std::tuple<const char*, std::string, int, std::string> cases[] = {
      {"in place, without its blank", "# c\n QEL_HTML_BROWSER=\"/o\"\n\nX=1\n", kBrowser,
       "# c\nQEL_HTML_BROWSER=\"/n\"\n\nX=1\n"},
      {"appended without an empty line", "QEL_HTML_BROWSER=\"/o\"\n; c\n", kReader,
       "QEL_HTML_BROWSER=\"/o\"\n; c\nQEL_PDF_READER=\"/n\"\n"},
      {"comments that name the key stay", "#QEL_PDF_READER=\"/o\"\n;QEL_PDF_READER=\"/o\"\n", kReader,
       "#QEL_PDF_READER=\"/o\"\n;QEL_PDF_READER=\"/o\"\nQEL_PDF_READER=\"/n\"\n"},
      {"lower case is another line", "qel_pdf_reader=\"/o\"\n", kReader,
       "qel_pdf_reader=\"/o\"\nQEL_PDF_READER=\"/n\"\n"},
      {"a last line without line feed", "X=1", kReader, "X=1\nQEL_PDF_READER=\"/n\"\n"},
      {"a last line that goes on stays last", "X=1\\\n", kReader, "QEL_PDF_READER=\"/n\"\nX=1\\\n"},
      {"so do all that are joined to it", "A=1\nX=1\\\n2\\", kReader, "A=1\nQEL_PDF_READER=\"/n\"\nX=1\\\n2\\"},
      {"so does one that would void the file", "A=1\nb\\\n", kReader, "A=1\nQEL_PDF_READER=\"/n\"\nb\\\n"},
      {"two backslashes go on over an empty line", "X=1\\\\\n\n", kReader, "QEL_PDF_READER=\"/n\"\nX=1\\\\\n\n"},
      {"so does one character", "A=1\n\\\nb", kReader, "A=1\n\\\nQEL_PDF_READER=\"/n\"\nb"},
      {"a last line that went on and is gone", "A=1\nQEL_ALT_DOC_PATH=\"/a:\\\n/b:\\\n", kAltPath,
       "A=1\nQEL_ALT_DOC_PATH=\"/n\"\n"},
      {"a line behind the own one that goes on", "QEL_PDF_READER=\"/a\\\nb=c\\\nd\"\nA=1\n", kReader,
       "QEL_PDF_READER=\"/n\"\nb=c\\\nd\"\nA=1\n"},
      {"an empty line behind the own one that goes on", "QEL_PDF_READER=\"/a\\\\\n\nd\"\nA=1\n", kReader,
       "QEL_PDF_READER=\"/n\"\n\nA=1\n"},
      {"a comment behind the own line that goes on", "QEL_PDF_READER=\"/a\\\n#c\\\nd\"\nA=1\n", kReader,
       "QEL_PDF_READER=\"/n\"\n#c\\\nd\"\nA=1\n"},
      {"a comment that swallows the old value's end", "QEL_ALT_DOC_PATH=\"/a:\n# c\\\n/b\"\nA=1\n", kAltPath,
       "# c\\\n/b\"\nA=1\nQEL_ALT_DOC_PATH=\"/n\"\n"},
      {"nothing stands before the equals sign", "QEL_PDF_READER=\"/a\\\n=b\"\n", kReader, "QEL_PDF_READER=\"/n\"\n"},
      {"an empty file", "", kReader, "QEL_PDF_READER=\"/n\"\n"},
      {"a line over 1023 characters", "X=" + std::string(3000, 'x') + "\n", kReader,
       "X=" + std::string(3000, 'x') + "\nQEL_PDF_READER=\"/n\"\n"},
      {"bytes", std::string("X=\xff\x1a\0y\n", 7), kReader,
       std::string("X=\xff\x1a\0y\n", 7) + "QEL_PDF_READER=\"/n\"\n"},
      {"three lines become one", "A=1\nQEL_ALT_DOC_PATH=\"/a:\\\n/b:\\\n/c\"\nB=2\n", kAltPath,
       "A=1\nQEL_ALT_DOC_PATH=\"/n\"\nB=2\n"},
      {"a comment inside the old value stays", "QEL_ALT_DOC_PATH=\"/a:\n# c\n\n/c\"\n", kAltPath,
       "# c\n\nQEL_ALT_DOC_PATH=\"/n\"\n"},
      {"a value that never ends is dropped", "QEL_ALT_DOC_PATH=\"/a:\n/b\nB=2\n", kAltPath,
       "QEL_ALT_DOC_PATH=\"/n\"\n"},
      {"the key's name inside the old value", "QEL_ALT_DOC_PATH=\"/a:\n/QEL_ALT_DOC_PATH/b:\n/c\"\nB=2\n", kAltPath,
       "QEL_ALT_DOC_PATH=\"/n\"\nB=2\n"},
      {"another key's lines stay", "QEL_PDF_READER=\"/a\\\n/b\"\nX=1\n", kAltPath,
       "QEL_PDF_READER=\"/a\\\n/b\"\nX=1\nQEL_ALT_DOC_PATH=\"/n\"\n"},
  };
  for (const auto& [what, old, key, fresh] : cases) EXPECT_EQ(edited(old, key, "/n"), fresh) << what;
}

TEST_F(OptionFile, WhatIsSetIsReadBack) {
  EXPECT_EQ(set_user(kBrowser, make_program("a b;#'$x")), 0);
  EXPECT_EQ(set_user(kReader, home), 0);
  EXPECT_EQ(read(user_file), "0 old, @/a b;#'$x, ") << "a directory is no program";
}

TEST_F(OptionFile, UnreadableFilesLeaveTheBuffersAndAMissingOneEmptiesTwo) {
  for (const std::string& file : {
           write("broken.ini", "QEL_ALT_DOC_PATH=\"/a\"\nno equals sign\n"),
           write("large.ini", "QEL_ALT_DOC_PATH=\"/a\"\n#" + std::string(64 * 1024, 'x')),
           make_fifo("fifo.ini"),
           home,
       })
    EXPECT_EQ(read(file), "0 old, /bin/sh, /bin/sh") << file;
  EXPECT_EQ(read(at("missing.ini")), "4 old, , ");
}

TEST_F(OptionFile, RefusedValuesLeaveTheFileAlone) {
  const std::string old = "QEL_PDF_READER=\"/o\"\n";
  write("root/qel_doc_options.ini", old);
  const std::string longest(1005, 'r');
  for (const std::string& value : Words{"a\"b", "a\nb", longest + "r"})
    EXPECT_EQ(set_tree(kReader, value), 5) << value.size();
  EXPECT_EQ(read_file(tree_file), old);
  EXPECT_EQ(set_tree(kReader, longest), 0);
  EXPECT_EQ(set_tree(kAltPath, std::string(1003, 'a')), 0);
  EXPECT_EQ(read(tree_file), "0 " + std::string(1003, 'a') + ", /bin/sh, ");
  EXPECT_EQ(set_user(kReader, longest), 5) << "in a new file a blank is before it";
  EXPECT_EQ(set_user(kReader, longest.substr(1)), 0);
}

// From iniparser 4.2 on a backslash in quotes stands for the character behind it: what may be set follows the reader.
TEST_F(OptionFile, ABackslashIsRefusedWhereTheReaderTakesItAway) {
  const bool keeps = read(write("probe.ini", "QEL_ALT_DOC_PATH=\"a\\b\"\n")) == "0 a\\b, /bin/sh, /bin/sh";
  for (const char* value : {"/a\\b", "\\\\server\\docs", "/a\\"}) {
    write("root/qel_doc_options.ini", "A=1\n");
    EXPECT_EQ(set_tree(kAltPath, value), keeps ? 0 : 5) << value;
    EXPECT_EQ(read(tree_file), keeps ? std::string("0 ") + value + ", /bin/sh, /bin/sh" : "0 old, /bin/sh, /bin/sh");
  }
}

TEST_F(OptionFile, AFileThatWouldGrowTooLargeToBeReadStays) {
  const std::string line = "QEL_PDF_READER=\"/n\"\n";
  const std::string limit(64 * 1024 - line.size() - 1, '#');
  EXPECT_EQ(edited(limit + "\n", kReader, "/n"), limit + "\n" + line);
  const std::string old = limit + "#\n";
  write("root/qel_doc_options.ini", old);
  EXPECT_EQ(set_tree(kReader, "/n"), 5);
  EXPECT_EQ(read_file(tree_file), old);
  EXPECT_NE(access((tree_file + ".new").c_str(), F_OK), 0);
}

// Another process sets an option of its own in the same file, which both find missing; neither undoes what the other set.
TEST_F(OptionFile, TwoWritersLoseNoOption) {
  constexpr int kTurns = 60;
  const auto has = [this](const std::string& line) { return read_file(tree_file).find(line) != std::string::npos; };
  const auto sets_and_keeps = [&](int key, const std::string& name) {
    std::string line;
    for (int turn = 0; turn < kTurns; ++turn) {
      const std::string value = "/" + std::to_string(turn);
      if (!has(line) || set_tree(key, value) != 0) return false;
      line = std::string(name).append("=\"").append(value).append("\"\n");
    }
    return true;
  };
  const pid_t other = fork();
  ASSERT_GE(other, 0);
  if (other == 0) _exit(sets_and_keeps(kBrowser, "QEL_HTML_BROWSER") ? 0 : 1);
  EXPECT_TRUE(sets_and_keeps(kReader, "QEL_PDF_READER"));
  int status = 0;
  EXPECT_EQ(waitpid(other, &status, 0), other);
  EXPECT_EQ(status, 0);
  EXPECT_TRUE(has("QEL_HTML_BROWSER=\"/59\"\n") && has("QEL_PDF_READER=\"/59\"\n")) << read_file(tree_file);
}

TEST_F(OptionFile, FilesThatCannotBeWritten) {
  EXPECT_EQ(locator.SetIniFile(kReader, "/n", 3), 5);
  EXPECT_EQ(locator.SetIniFile(9, "/n", kTreeFile), 5);
  mkdir((tree_file + ".new").c_str(), 0700);
  EXPECT_EQ(set_tree(kReader, "/n"), 5);
  write("root/qel_doc_options.ini", "X=1\n");
  EXPECT_EQ(set_tree(kReader, "/n"), 5);
  EXPECT_EQ(read_file(tree_file), "X=1\n");
  locator.ClearPathList(list);
  EXPECT_EQ(set_tree(kReader, "/n"), 4);
  EXPECT_EQ(locator.SetAltViewerPath(OLH_VIEWER_PDF, "/n"), 4);
  char url[] = "http://h/docs";
  locator.AddTail(list, url, nullptr, nullptr, nullptr);
  EXPECT_EQ(set_tree(kReader, "/n"), 5);
}

TEST_F(OptionFile, AMissingHomeIsMadeWithoutRunningItsName) {
  const std::string new_home = dir + "/ho\"me $(touch owned) `touch owned`";
  set("HOME", new_home);
  EXPECT_EQ(set_user(kBrowser, "/b"), 0);
  EXPECT_NE(read_file(new_home + "/.qel_viewer_config.ini"), "");
  EXPECT_NE(access("owned", F_OK), 0);
  set("HOME", dir + "/no/such/parent");
  const std::string said = standard_error_of([this] { EXPECT_EQ(set_user(kBrowser, "/b"), 5); });
  EXPECT_NE(said.find("/no/such/parent"), std::string::npos);
}

// One that does not fit is not taken for none, and mkdir gets no option.
TEST_F(OptionFile, AHomeThatCannotBeNamedIsNotMade) {
  const Recorder mkdir_program = add_viewer("mkdir");
  for (const std::string& odd : {"/" + std::string(4095, 'h'), std::string("-x")}) {
    set("HOME", odd);
    EXPECT_EQ(set_user(kBrowser, "/b"), 5);
    EXPECT_TRUE(mkdir_program.invocations().empty()) << "a directory is made";
  }
}

TEST_F(OptionFile, TheTreesFileIsThatOfTheParent) {
  make_root("alt");
  std::string alt = dir + "/alt";
  std::string parent = root;
  locator.Push(list, alt.data(), parent.data(), parent.data(), parent.data());
  EXPECT_EQ(locator.SetAltViewerPath(OLH_VIEWER_HTML, "/b"), 0);
  EXPECT_EQ(locator.SetAltViewerPath(OLH_VIEWER_PDF, "/r"), 0);
  EXPECT_TRUE(read_file(tree_file).ends_with("\n QEL_HTML_BROWSER=\"/b\"\nQEL_PDF_READER=\"/r\"\n"));
  EXPECT_EQ(locator.SetAltViewerPath(OLH_VIEWER_TOMEDECK, "/b"), 2);
}

TEST_F(OptionFile, StrippedTextIsACopy) {
  char text[] = " \t a b \r\n";
  EXPECT_STREQ(locator.strstrip(text), "a b");
  EXPECT_STREQ(text, " \t a b \r\n");
  EXPECT_EQ(locator.strstrip(nullptr), nullptr);
}

}  // namespace
