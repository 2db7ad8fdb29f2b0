#include <sys/stat.h>

#include "http_server.h"
#include "olh/support.h"
#include "path_texts.h"
#include "scratch.h"

namespace {

using olh_test::Root;

class RootOptions : public olh_test::Scratch {
 protected:
  // Everything said while `work` runs.
  template <class Work>
  std::string said_by(Work work) {
    set("OLH_DEBUG", "1");
    setDebugVariable();
    return olh_test::standard_error_of(work);
  }

  olh_docList locator;
};

TEST_F(RootOptions, DirectoryIsARootByWhatIsInIt) {
  for (const char* const name : {"htmldocs", "pdfdocs", "system_admin_docs"})
    make_directory(std::string(name) + "/" + name);
  write("options/qel_doc_options.ini", "");
  make_directory("other/tomedecks");
  write("file", "");
  const struct {
    const char* name;
    const char* outcome;
  } cases[] = {{"htmldocs", "done"},
               {"pdfdocs", "done"},
               {"system_admin_docs", "done"},
               {"options", "done"},
               {"options/", "done"},
               {"other", "failed: path does not contain docs"},
               {"file", "failed: path does not contain docs"},
               {"missing", "failed: path does not exist"}};
  for (const auto& expected : cases) {
    const std::string path = dir + "/" + expected.name;
    int result = -1;
    const std::string said = said_by([&] { result = locator.ValidDocPath(path.c_str()); });
    EXPECT_EQ(said, "olh_docList::ValidDocPath: " + path + "\nolh_docList::ValidDocPath: " + expected.outcome + "\n");
    EXPECT_EQ(result, std::string(expected.outcome) == "done" ? 1 : 0) << path;
  }
}

TEST_F(RootOptions, UrlIsARootByOneOfTwoPages) {
  using Paths = std::vector<std::string>;
  const struct {
    Paths served;
    int result;
    Paths asked;
  } cases[] = {
      {{"/d/htmldocs/qelhelp.htm"}, 1, {"/d/htmldocs/qelhelp.htm"}},
      {{"/d/tomedecks/index.html"}, 1, {"/d/htmldocs/qelhelp.htm", "/d/tomedecks/index.html"}},
      {{"/d/pdfdocs"}, 0, {"/d/htmldocs/qelhelp.htm", "/d/tomedecks/index.html"}},
  };
  for (const auto& expected : cases) {
    const olh_test::HttpServer server(expected.served);
    EXPECT_EQ(locator.ValidDocPath(server.url("/d").c_str()), expected.result);
    EXPECT_EQ(server.requested_paths(), expected.asked);
  }
  EXPECT_EQ(locator.ValidDocPath("https://127.0.0.1/d"), 0);
}

TEST_F(RootOptions, ProgramCountsOnlyWhenItIsExecutable) {
  const std::string root = make_root("root");
  const std::string browser = make_program("tree/browser");
  const std::string no_program = write("tree/text", "");
  const std::string file =
      write("root/qel_doc_options.ini", "QEL_HTML_BROWSER=\"" + browser + "\"\nQEL_PDF_READER=\"" + no_program +
                                            "\"\n[section]\nQEL_ALT_DOC_PATH=/elsewhere\n");
  const std::string said = said_by([&] { EXPECT_EQ(locator.ReadQelDocOptions(file.c_str()), 0); });
  EXPECT_EQ(said,
            "olh_docList::ReadQelDocOptions\n"
            "olh_docList::ReadQelDocOptions: " +
                file +
                "\n"
                "olh_docList::ReadQelDocOptions: QEL_HTML_BROWSER=" +
                browser +
                "\n"
                "olh_docList::ReadQelDocOptions: QEL_PDF_READER=" +
                no_program +
                "\n"
                "olh_docList::ValidDocPath: " +
                root +
                "\n"
                "olh_docList::ValidDocPath: done\n"
                "olh_docList::ReadQelDocOptions: done\n");
  EXPECT_EQ(olh_test::roots_of(locator.mDocPathList), (std::vector<Root>{{root, browser}}));
}

TEST_F(RootOptions, UnreadableFilesAddNothing) {
  const std::string fifo = make_root("fifo") + "/qel_doc_options.ini";
  ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
  const std::string line = "QEL_ALT_DOC_PATH=/x\n";
  std::string large = line;
  while (large.size() <= 64 * 1024) large += "# a comment that makes the file too large to be read\n";
  const std::string files[] = {
      dir + "/missing.ini",
      fifo,
      make_directory("directory/qel_doc_options.ini"),
      write("large/qel_doc_options.ini", large),
      write("broken/qel_doc_options.ini", line + "no key, no section, no comment\n"),
      write("long/qel_doc_options.ini", line + "KEY=" + std::string(2000, 'v') + "\n"),
  };
  for (const std::string& file : files) {
    const std::string said = said_by([&] { EXPECT_EQ(locator.ReadQelDocOptions(file.c_str()), 0); });
    EXPECT_EQ(olh_test::lines_after("olh_docList::", said),
              (std::vector<std::string>{"ReadQelDocOptions", "ReadQelDocOptions: cannot parse file: " + file}));
    EXPECT_EQ(locator.mDocPathList, nullptr) << file;
  }
}

TEST_F(RootOptions, LargestFileIsRead) {
  const std::string root = make_root("root");
  const std::string alternate = make_root("alternate");
  std::string text = "QEL_ALT_DOC_PATH=" + alternate + "\n";
  while (text.size() + 64 <= 64 * 1024) text += std::string("#") + std::string(62, 'c') + "\n";
  text += std::string(64 * 1024 - text.size(), '\n');
  locator.ReadQelDocOptions(write("root/qel_doc_options.ini", text).c_str());
  EXPECT_EQ(olh_test::paths_of(locator.mDocPathList), alternate + " " + root);
}

TEST_F(RootOptions, KeyWithoutValueIsNoValue) {
  const std::string root = make_root("root");
  locator.ReadQelDocOptions(
      write("root/qel_doc_options.ini", "QEL_ALT_DOC_PATH\nQEL_HTML_BROWSER=\n[:qel_pdf_reader]\n").c_str());
  locator.ReadQelDocOptions(write("root/qel_doc_options.ini", "QEL_HTML_BROWSER=\n[:qel_pdf_reader]\n").c_str());
  EXPECT_EQ(olh_test::roots_of(locator.mDocPathList), (std::vector<Root>{{root}}));
}

}  // namespace
