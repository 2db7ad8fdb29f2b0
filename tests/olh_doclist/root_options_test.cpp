#include "http_server.h"
#include "olh/support.h"
#include "path_scene.h"

namespace {

using namespace olh_test;

class RootOptions : public PathScene {
 protected:
  // Reads the options of the root "root", which hold this text.
  void read(const std::string& text) {
    make_root("root");
    EXPECT_EQ(locator.ReadQelDocOptions(write("root/qel_doc_options.ini", text).c_str()), 0);
  }
};

TEST_F(RootOptions, DirectoryIsARootByWhatIsInIt) {
  for (const char* const name : {"htmldocs", "pdfdocs", "system_admin_docs"})
    make_directory(std::string(name) + "/" + name);
  write("options/qel_doc_options.ini", "");
  make_directory("other/tomedecks");
  write("file", "");
  for (const char* const root : {"htmldocs", "pdfdocs", "system_admin_docs", "options", "options/"})
    EXPECT_EQ(locator.ValidDocPath(at(root).c_str()), 1) << root;
  for (const char* const none : {"other", "file", "missing"})
    EXPECT_EQ(locator.ValidDocPath(at(none).c_str()), 0) << none;
}

TEST_F(RootOptions, UrlIsARootByOneOfTwoPages) {
  const std::tuple<Words, int, Words> cases[] = {
      {{"/d/htmldocs/qelhelp.htm"}, 1, {"/d/htmldocs/qelhelp.htm"}},
      {{"/d/tomedecks/index.html"}, 1, {"/d/htmldocs/qelhelp.htm", "/d/tomedecks/index.html"}},
      {{"/d/pdfdocs"}, 0, {"/d/htmldocs/qelhelp.htm", "/d/tomedecks/index.html"}},
  };
  for (const auto& [served, result, asked] : cases) {
    const HttpServer server(served);
    EXPECT_EQ(locator.ValidDocPath(server.url("/d").c_str()), result);
    EXPECT_EQ(server.requested_paths(), asked);
  }
  EXPECT_EQ(locator.ValidDocPath("https://127.0.0.1/d"), 0);
}

TEST_F(RootOptions, ProgramCountsOnlyWhenItIsExecutable) {
  read("QEL_HTML_BROWSER=\"" + make_program("tree/browser") + "\"\nQEL_PDF_READER=\"" + write("tree/text", "") +
       "\"\n[section]\nQEL_ALT_DOC_PATH=/elsewhere\n");
  EXPECT_EQ(roots(), (Roots{{"@/root", "@/tree/browser"}}));
}

TEST_F(RootOptions, UnreadableFilesAddNothing) {
  const std::string line = "QEL_ALT_DOC_PATH=/x\n";
  std::string large = line;
  while (large.size() <= 64 * 1024) large += "# a comment that makes the file too large to be read\n";
  for (const std::string& file : {
           at("missing.ini"),
           make_fifo("fifo/qel_doc_options.ini"),
           make_directory("directory/qel_doc_options.ini"),
           write("large/qel_doc_options.ini", large),
           write("broken/qel_doc_options.ini", line + "no key, no section, no comment\n"),
           write("long/qel_doc_options.ini", line + "KEY=" + std::string(2000, 'v') + "\n"),
       }) {
    const std::string said = debug_lines_of([&] { EXPECT_EQ(locator.ReadQelDocOptions(file.c_str()), 0); });
    EXPECT_TRUE(said.ends_with("olh_docList::ReadQelDocOptions: cannot parse file: " + shortened(file) + "\n"))
        << said;
    EXPECT_EQ(list, nullptr) << file;
  }
}

TEST_F(RootOptions, LargestFileIsRead) {
  std::string text = "QEL_ALT_DOC_PATH=" + make_root("alternate") + "\n";
  while (text.size() + 64 <= 64 * 1024) text += std::string("#") + std::string(62, 'c') + "\n";
  text += std::string(64 * 1024 - text.size(), '\n');
  read(text);
  EXPECT_EQ(paths(), "@/alternate @/root");
}

TEST_F(RootOptions, KeyWithoutValueIsNoValue) {
  read("QEL_ALT_DOC_PATH\nQEL_HTML_BROWSER=\n[:qel_pdf_reader]\n");
  read("QEL_HTML_BROWSER=\n[:qel_pdf_reader]\n");
  EXPECT_EQ(roots(), Roots{{"@/root"}});
}

}  // namespace
