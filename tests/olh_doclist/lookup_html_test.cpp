#include <unistd.h>

#include "http_server.h"
#include "lookup_scene.h"

namespace {

using namespace olh_test;
using LookupHtml = LookupScene;

TEST_F(LookupHtml, WithoutFallbackNoPdfFormIsTried) {
  add_root("/r1");
  EXPECT_EQ(tested_by([&] { html("guide.pdf", 0); }),
            (Words{"/r1/htmldocs/guide/index.htm", "/r1/htmldocs/guide/guide.htm", "/r1/tomedecks/guide/index.html",
                   "guide.pdf"}));
}

TEST_F(LookupHtml, FormsOfAManual) {
  const std::pair<std::string, std::string> cases[] = {
      {"guide", "root/htmldocs/guide/index.htm"},         {"guide.Pdf", "root/htmldocs/guide/index.htm"},
      {"guide", "root/htmldocs/guide/guide.htm"},         {"Guide_td", "root/tomedecks/Guide_td/index.html"},
      {"sub/guide", "root/htmldocs/sub/guide/index.htm"},
  };
  add_root(dir + "/empty", "none");
  add_root(dir + "/root", "browser", "reader");
  for (const auto& [name, page] : cases) {
    const std::string path = write(page, "<html>");
    EXPECT_EQ(html(name), (Found{1, "file://@/" + page, "browser"}));
    EXPECT_EQ(root_searched_last(), "@/root");
    EXPECT_EQ(locator.mContext, nullptr);
    unlink(path.c_str());
  }
}

TEST_F(LookupHtml, PdfOfARootComesBeforeTheNextRoot) {
  add_root(dir + "/a", "browser", "reader");
  add_root(dir + "/b", "browser b", "reader b");
  write("b/htmldocs/guide/index.htm", "<html>");
  write("a/pdfdocs/guide.pdf", "%PDF");
  EXPECT_EQ(html("guide.pdf"), (Found{1, "@/a/pdfdocs/guide.pdf", "reader"}));
  EXPECT_EQ(root_searched_last(), "@/a");
  EXPECT_EQ(html("guide.pdf", 0).viewer, "browser b");
}

TEST_F(LookupHtml, UrlIsTakenAsItIsAndBecomesTheContext) {
  add_root(dir);
  EXPECT_EQ(tested_by([&] { EXPECT_EQ(html("https://h\\x/"), (Found{1, "https://h/x", kUntouched})); }), Words{});
  EXPECT_STREQ(locator.mContext, "https://h\\x/");
  EXPECT_EQ(html("http://h/" + std::string(5000, 'x')), (Found{0, "", ""}));
  EXPECT_EQ(locator.mContext, nullptr);
}

TEST_F(LookupHtml, NameThatIsAPathComesFirst) {
  add_root(dir);
  make_directory("d/manual");
  EXPECT_EQ(html(dir + "/d/manual/"), (Found{1, "file://@/d/manual", kUntouched}));
  const std::string page = write("d/manual/index.htm", "<html>");
  EXPECT_EQ(html(dir + "\\d\\manual"), (Found{1, "file://@/d/manual/index.htm", kUntouched}));
  EXPECT_EQ(locator.mContext, nullptr);
  EXPECT_EQ(html(page).location, "file://@/d/manual/index.htm");
}

TEST_F(LookupHtml, CurrentDirectoryComesLastAndGivesNoPdf) {
  write("page.htm", "<html>");
  write("book.PDF", "%PDF");
  ASSERT_EQ(chdir(dir.c_str()), 0);
  EXPECT_EQ(html("page.htm"), (Found{1, "file://@/page.htm", kUntouched}));
  EXPECT_EQ(html("book.PDF"), (Found{0, "", kUntouched}));
  add_root("/missing");
  EXPECT_EQ(html("book.PDF"), (Found{1, "book.PDF", ""})) << "as the substitute in a root";
}

TEST_F(LookupHtml, DirectoryThatIsGoneHoldsNothing) {
  const std::string gone = make_directory("gone");
  ASSERT_EQ(chdir(gone.c_str()), 0);
  ASSERT_EQ(rmdir(gone.c_str()), 0);
  EXPECT_EQ(html("."), (Found{0, "", kUntouched}));
}

TEST_F(LookupHtml, UrlRootGivesUrl) {
  HttpServer server(Words{"/d/htmldocs/a/index.htm", "/d/tomedecks/b/index.html", "/d/pdfdocs/c.pdf"});
  add_root(server.url("/d"), "browser", "reader");
  EXPECT_EQ(html("a"), (Found{1, server.url("/d/htmldocs/a/index.htm"), "browser"}));
  EXPECT_EQ(html("b"), (Found{1, server.url("/d/tomedecks/b/index.html"), "browser"}));
  EXPECT_EQ(html("c"), (Found{1, server.url("/d/pdfdocs/c.pdf"), "browser"}));
  EXPECT_EQ(locator.mCurrentDocPath, server.url("/d"));
}

TEST_F(LookupHtml, NamelessRootStillTriesItsSubstitute) {
  add_root("", "browser", "reader");
  EXPECT_EQ(html("N"), (Found{0, "", "reader"}));
  EXPECT_EQ(html(""), (Found{0, kUntouched, kUntouched}));
}

TEST_F(LookupHtml, LocationLongerThanABufferIsAbsent) {
  std::string deep = dir;
  while (deep.size() < 4060) deep += "/" + std::string(std::min<std::size_t>(200, 4070 - deep.size()), 'd');
  add_root(deep);
  EXPECT_EQ(html(std::string(40, 'n')), (Found{0, "", ""}));
}

}  // namespace
