#include <unistd.h>

#include "http_server.h"
#include "lookup_scene.h"

namespace {

using olh_test::Found;
using olh_test::HttpServer;
using olh_test::kUntouched;
using olh_test::tested_by;
using Names = std::vector<std::string>;

using LookupPdf = olh_test::LookupScene;

TEST_F(LookupPdf, TestsEachCandidateOnceInOrder) {
  HttpServer server(Names{});
  add_root("/r1");
  add_root(server.url(""));
  add_root("/r3");
  EXPECT_EQ(tested_by([&] {
              EXPECT_EQ(pdf("N"), (Found{0, "", ""}));
            }),
            (Names{"/r1/pdfdocs/N.pdf", "/r1/system_admin_docs/N.pdf", "N", "/r3/pdfdocs/N.pdf",
                   "/r3/system_admin_docs/N.pdf", "N.pdf"}));
  EXPECT_EQ(server.requested_paths(), (Names{"/pdfdocs/N.pdf", "/system_admin_docs/N.pdf", "/htmldocs/N/index.htm",
                                             "/tomedecks/N/index.html"}));
}

TEST_F(LookupPdf, WithoutFallbackNoHtmlFormIsTried) {
  HttpServer server(Names{});
  add_root(server.url(""));
  EXPECT_EQ(tested_by([&] { pdf("N", 0); }), Names{"N.pdf"});
  EXPECT_EQ(server.requested_paths().size(), 2u);
}

TEST_F(LookupPdf, NamesBecomeFileNames) {
  struct {
    const char* name;
    const char* file;
  } const cases[] = {
      {"Manual", "pdfdocs/Manual.pdf"},
      {"Manual.PDF", "pdfdocs/Manual.PDF"},
      {"m.pDf", "pdfdocs/m.pDf"},
      {"pdf", "pdfdocs/pdf.pdf"},
      {".pdf", "pdfdocs/.pdf"},
      {"sub/guide", "pdfdocs/sub/guide.pdf"},
      {"admin", "system_admin_docs/admin.pdf"},
  };
  add_root(dir + "/empty", "", "none");
  add_root(dir + "/root", "browser", "reader");
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const std::string path = write(std::string("root/") + c.file, "%PDF");
    EXPECT_EQ(pdf(c.name), (Found{1, path, "reader"}));
    EXPECT_EQ(locator.mCurrentDocPath, dir + "/root");
    unlink(path.c_str());
  }
}

TEST_F(LookupPdf, NameThatIsAPathComesFirst) {
  add_root(dir);
  const std::string path = write("sub/guide", "%PDF");
  write("pdfdocs/sub/guide.pdf", "%PDF");
  EXPECT_EQ(pdf(dir + "/sub\\guide/"), (Found{1, path, kUntouched}));
  EXPECT_EQ(tested_by([&] { EXPECT_EQ(pdf("sub/guide").location, dir + "/pdfdocs/sub/guide.pdf"); }),
            (Names{"sub/guide", dir + "/pdfdocs/sub/guide.pdf"}));
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
  HttpServer server(Names{"/d/system_admin_docs/sub/N.pdf", "/d/tomedecks/M/index.html"});
  add_root(server.url("/d"), "browser", "reader");
  EXPECT_EQ(pdf("sub\\N"), (Found{1, server.url("/d/system_admin_docs/sub/N.pdf"), "browser"}));
  EXPECT_EQ(pdf("M"), (Found{1, server.url("/d/tomedecks/M/index.html"), "browser"}));
  EXPECT_EQ(pdf("none"), (Found{0, "", "reader"})) << "what the HTML form, tried last, leaves there";
}

TEST_F(LookupPdf, NamelessRootIsPassedOver) {
  add_root("", "browser", "reader");
  add_root(dir);
  write("pdfdocs/N.pdf", "%PDF");
  EXPECT_EQ(tested_by([&] { EXPECT_EQ(pdf("N").result, 1); }), Names{dir + "/pdfdocs/N.pdf"});
}

TEST_F(LookupPdf, InvalidArgumentsLeaveTheBuffersAlone) {
  add_root(dir);
  EXPECT_EQ(pdf(""), (Found{0, kUntouched, kUntouched}));
  EXPECT_EQ(find([&](char*, char* viewer) { return locator.FindPdfDoc(nullptr, "N", viewer, 1); }),
            (Found{0, kUntouched, kUntouched}));
  EXPECT_EQ(said_by([&] { find([&](char* o, char* v) { return locator.FindPdfDoc(o, nullptr, v, 1); }); }),
            "olh_docList::FindPdfDoc\nolh_docList::FindPdfDoc: invalid arg\n");
}

TEST_F(LookupPdf, NullViewerPathIsTaken) {
  const std::string path = write("pdfdocs/N.pdf", "%PDF");
  add_root(dir, "", "reader");
  EXPECT_EQ(find([&](char* out, char*) { return locator.FindPdfDoc(out, "N", nullptr, 1); }),
            (Found{1, path, kUntouched}));
}

TEST_F(LookupPdf, CandidateLongerThanABufferIsAbsent) {
  add_root("/" + std::string(5000, 'r'));
  add_root(dir);
  EXPECT_EQ(tested_by([&] {
              EXPECT_EQ(pdf(std::string(4091, 'n')), (Found{0, "", ""}));
            }),
            Names{std::string(4091, 'n') + ".pdf"});
  EXPECT_EQ(tested_by([&] { EXPECT_EQ(pdf(std::string(4092, 'n')), (Found{0, "", ""})); }), Names{});
  EXPECT_EQ(tested_by([&] { EXPECT_EQ(pdf(std::string(9000, '/')), (Found{0, "", ""})); }), Names{});
}

TEST_F(LookupPdf, ForgetsTheContext) {
  html("http://h/x");
  ASSERT_STREQ(locator.mContext, "http://h/x");
  pdf("N");
  EXPECT_EQ(locator.mContext, nullptr);
}

TEST_F(LookupPdf, DebugLines) {
  add_root("/missing", "", "reader");
  add_root(dir);
  const std::string path = write("pdfdocs/N.pdf", "%PDF");
  const std::string start =
      "olh_docList::FindPdfDoc\n"
      "olh_docList::FindPdfDoc: Looking for %s at: /missing\n"
      "olh_docList::FindPdfDoc: viewer override: reader\n"
      "olh_docList::FindPdfDoc: Looking for %s at: " +
      dir + "\n";
  const auto for_name = [&](const char* name) {
    std::string text = start;
    for (std::size_t at = text.find("%s"); at != std::string::npos; at = text.find("%s")) text.replace(at, 2, name);
    return text;
  };
  EXPECT_EQ(said_by([&] { pdf("N"); }),
            for_name("N") + "olh_docList::FindPdfDoc: " + path + "\nolh_docList::FindPdfDoc: done\n");
  EXPECT_EQ(said_by([&] { pdf("M"); }), for_name("M") + "olh_docList::FindPdfDoc: failed\n");
}

TEST_F(LookupPdf, OneRootAloneIsSearchedAndTheSearchPathStays) {
  write("a/pdfdocs/N.pdf", "%PDF");
  const std::string path = write("b/pdfdocs/N.pdf", "%PDF");
  add_root(dir + "/a");
  add_root(dir + "/b", "", "reader");
  OlhPathList* const first = locator.mDocPathList;
  const auto helper = [&](int kind) {
    return find([&](char* out, char* v) { return locator.FindDocHelper(out, "N", first->next, v, kind); });
  };
  EXPECT_EQ(helper(0), (Found{1, path, "reader"}));
  EXPECT_EQ(helper(1), (Found{0, "", "reader"}));
  EXPECT_EQ(helper(2), (Found{0, kUntouched, kUntouched}));
  EXPECT_EQ(locator.mDocPathList, first);
  EXPECT_EQ(first->next->next, nullptr);
  OlhPathList* none = nullptr;
  EXPECT_EQ(find([&](char* out, char* v) { return locator.FindDocHelper(out, "N", none, v, 0); }).result, 0);
}

}  // namespace
