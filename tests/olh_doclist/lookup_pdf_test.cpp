#include <unistd.h>

#include "http_server.h"
#include "lookup_scene.h"

namespace {

using namespace olh_test;
using LookupPdf = LookupScene;

TEST_F(LookupPdf, WithoutFallbackNoHtmlFormIsTried) {
  HttpServer server(Words{});
  add_root(server.url(""));
  EXPECT_EQ(tested_by([&] { pdf("N", 0); }), Words{"N.pdf"});
  EXPECT_EQ(server.requested_paths().size(), 2u);
}

TEST_F(LookupPdf, NamesBecomeFileNames) {
  const std::pair<std::string, std::string> cases[] = {
      {"Manual", "root/pdfdocs/Manual.pdf"},
      {"Manual.PDF", "root/pdfdocs/Manual.PDF"},
      {"m.pDf", "root/pdfdocs/m.pDf"},
      {"pdf", "root/pdfdocs/pdf.pdf"},
      {".pdf", "root/pdfdocs/.pdf"},
      {"sub/guide", "root/pdfdocs/sub/guide.pdf"},
      {"admin", "root/system_admin_docs/admin.pdf"},
  };
  add_root(dir + "/empty", "", "none");
  add_root(dir + "/root", "browser", "reader");
  for (const auto& [name, file] : cases) {
    const std::string path = write(file, "%PDF");
    EXPECT_EQ(pdf(name), (Found{1, "@/" + file, "reader"}));
    EXPECT_EQ(root_searched_last(), "@/root");
    unlink(path.c_str());
  }
  EXPECT_EQ(pdf(""), (Found{0, kUntouched, kUntouched}));
}

TEST_F(LookupPdf, NameThatIsAPathComesFirst) {
  add_root(dir);
  write("sub/guide", "%PDF");
  write("pdfdocs/sub/guide.pdf", "%PDF");
  EXPECT_EQ(pdf(dir + "/sub\\guide/"), (Found{1, "@/sub/guide", kUntouched}));
  EXPECT_EQ(tested_by([&] { EXPECT_EQ(pdf("sub/guide").location, "@/pdfdocs/sub/guide.pdf"); }),
            (Words{"sub/guide", "@/pdfdocs/sub/guide.pdf"}));
}

TEST_F(LookupPdf, CurrentDirectoryComesLast) {
  add_root("/missing", "", "reader");
  write("here.PDF", "%PDF");
  ASSERT_EQ(chdir(dir.c_str()), 0);
  EXPECT_EQ(pdf("here.PDF"), (Found{1, "here.PDF", "reader"}));
  locator.ClearPathList(locator.mDocPathList);
  EXPECT_EQ(pdf("here.PDF"), (Found{1, "here.PDF", kUntouched}));
}

TEST_F(LookupPdf, UrlRootGivesUrlAndItsBrowser) {
  HttpServer server(Words{"/d/system_admin_docs/sub/N.pdf", "/d/tomedecks/M/index.html"});
  add_root(server.url("/d"), "browser", "reader");
  EXPECT_EQ(pdf("sub\\N"), (Found{1, server.url("/d/system_admin_docs/sub/N.pdf"), "browser"}));
  EXPECT_EQ(pdf("M"), (Found{1, server.url("/d/tomedecks/M/index.html"), "browser"}));
  EXPECT_EQ(pdf("none"), (Found{0, "", "reader"})) << "what the HTML form, tried last, leaves there";
}

TEST_F(LookupPdf, CandidateLongerThanABufferIsAbsent) {
  add_root(dir);
  const std::string longest = std::string(4091, 'n');
  EXPECT_EQ(tested_by([&] { pdf(longest); }), Words{longest + ".pdf"});
  EXPECT_EQ(tested_by([&] { EXPECT_EQ(pdf(longest + "n"), (Found{0, "", ""})); }), Words{});
  EXPECT_EQ(tested_by([&] { EXPECT_EQ(pdf(std::string(9000, '/')), (Found{0, "", ""})); }), Words{});
}

TEST_F(LookupPdf, OneRootAloneIsSearchedAndTheSearchPathStays) {
  write("a/pdfdocs/N.pdf", "%PDF");
  write("b/pdfdocs/N.pdf", "%PDF");
  add_root(dir + "/a");
  add_root(dir + "/b", "", "reader");
  OlhPathList* const first = locator.mDocPathList;
  const auto helper = [&](OlhPathList* entry, int kind) {
    return find([&](char* out, char* v) { return locator.FindDocHelper(out, "N", entry, v, kind); });
  };
  EXPECT_EQ(helper(first->next, 0), (Found{1, "@/b/pdfdocs/N.pdf", "reader"}));
  EXPECT_EQ(helper(first->next, 1), (Found{0, "", "reader"}));
  EXPECT_EQ(helper(first->next, 2), (Found{0, kUntouched, kUntouched}));
  EXPECT_EQ(helper(nullptr, 0), (Found{0, kUntouched, kUntouched}));
  EXPECT_EQ(locator.mDocPathList, first);
  EXPECT_EQ(first->next->next, nullptr);
}

}  // namespace
