// What the three lookups of a document have in common; then the two that find no manual: of portals, and of paths.
#include <unistd.h>

#include "http_server.h"
#include "lookup_scene.h"

namespace {

using namespace olh_test;

struct Lookup {
  const char* name;
  int (*call)(olh_docList& locator, char* out, const char* name, char* viewer);
  const char* file;     // below a root, which it finds as N
  Words without_roots;  // what it tests when no root is there
  Words tested;         // in /r1, behind a URL, and in /r3
  Words probed;
};

class EachLookup : public LookupScene, public ::testing::WithParamInterface<Lookup> {
 protected:
  Found found(const std::string& name) {
    return find([&](char* out, char* viewer) { return GetParam().call(locator, out, name.c_str(), viewer); });
  }
};

TEST_P(EachLookup, TestsEachCandidateOnceInOrder) {
  HttpServer server(Words{});
  const std::string url = server.url("");
  for (const std::string& root : {std::string("/r1"), url, std::string("/r3")}) add_root(root);
  Words tested = tested_by([&] { EXPECT_EQ(found("N"), (Found{0, "", ""})); });
  for (std::string& name : tested)
    if (name.starts_with(url)) name.replace(0, url.size(), "URL");
  EXPECT_EQ(tested, GetParam().tested);
  EXPECT_EQ(server.requested_paths(), GetParam().probed);
}

TEST_P(EachLookup, TakesNoNullButForTheViewer) {
  const auto call = GetParam().call;
  write(GetParam().file, "");
  add_root(dir, "viewer", "viewer");
  const Found refused = {0, kUntouched, kUntouched};
  EXPECT_EQ(find([&](char*, char* viewer) { return call(locator, nullptr, "N", viewer); }), refused);
  EXPECT_EQ(find([&](char* out, char* viewer) { return call(locator, out, nullptr, viewer); }), refused);
  EXPECT_EQ(find([&](char* out, char*) { return call(locator, out, "N", nullptr); }).result, 1);
  EXPECT_EQ(found("N").viewer, "viewer");
}

TEST_P(EachLookup, PassesNamelessRootsOver) {
  write(GetParam().file, "");
  add_root("", "viewer", "viewer");
  EXPECT_EQ(tested_by([&] { EXPECT_EQ(found("N").result, 0); }), GetParam().without_roots);
  add_root(dir);
  EXPECT_EQ(found("N").result, 1);
}

TEST_P(EachLookup, FindsNothingThatDoesNotFit) {
  add_root("/" + std::string(5000, 'r'));
  add_root(dir);
  EXPECT_EQ(found(std::string(9000, 'n')), (Found{0, "", ""}));
}

TEST_P(EachLookup, ForgetsTheContext) {
  html("http://h/x");
  ASSERT_STREQ(locator.mContext, "http://h/x");
  found("N");
  EXPECT_EQ(locator.mContext, nullptr);
}

const Lookup kLookups[] = {
    {"Html",
     [](olh_docList& l, char* out, const char* name, char* viewer) { return l.FindHtmlDoc(out, name, viewer, 1); },
     "htmldocs/N/index.htm",
     {"N.pdf", "N"},
     {"/r1/htmldocs/N/index.htm", "/r1/htmldocs/N/N.htm", "/r1/tomedecks/N/index.html", "/r1/pdfdocs/N.pdf",
      "/r1/system_admin_docs/N.pdf", "N.pdf", "N.pdf", "/r3/htmldocs/N/index.htm", "/r3/htmldocs/N/N.htm",
      "/r3/tomedecks/N/index.html", "/r3/pdfdocs/N.pdf", "/r3/system_admin_docs/N.pdf", "N.pdf", "N"},
     {"/htmldocs/N/index.htm", "/tomedecks/N/index.html", "/pdfdocs/N.pdf", "/system_admin_docs/N.pdf"}},
    {"Pdf",
     [](olh_docList& l, char* out, const char* name, char* viewer) { return l.FindPdfDoc(out, name, viewer, 1); },
     "pdfdocs/N.pdf",
     {"N.pdf"},
     {"/r1/pdfdocs/N.pdf", "/r1/system_admin_docs/N.pdf", "N", "/r3/pdfdocs/N.pdf", "/r3/system_admin_docs/N.pdf",
      "N.pdf"},
     {"/pdfdocs/N.pdf", "/system_admin_docs/N.pdf", "/htmldocs/N/index.htm", "/tomedecks/N/index.html"}},
    {"Portal",
     [](olh_docList& l, char* out, const char* name, char* viewer) { return l.FindTomeDeck(out, name, viewer); },
     "tomedecks/N/index.html",
     {},
     {"/r1/tomedecks/N/index.html", "URL/tomedecks/N/index.html", "/r3/tomedecks/N/index.html"},
     {"/tomedecks/N/index.html"}},
};
INSTANTIATE_TEST_SUITE_P(Of, EachLookup, ::testing::ValuesIn(kLookups),
                         [](const auto& lookup) { return std::string(lookup.param.name); });

class LookupPortal : public LookupScene {
 protected:
  Found portal(const std::string& name) {
    return find([&](char* out, char* viewer) { return locator.FindTomeDeck(out, name.c_str(), viewer); });
  }
};

TEST_F(LookupPortal, NamedPortalIsTheMainPageWithItsNameInTheQuery) {
  write("d/tomedecks/x y/index.html", "<html>");
  add_root("/missing", "none");
  add_root(dir + "/d", "browser");
  const Found expected = {1, "file://@/d/tomedecks/index.html?tomedeck=x y", "browser"};
  EXPECT_EQ(tested_by([&] { EXPECT_EQ(portal("x y"), expected); }),
            (Words{"/missing/tomedecks/x y/index.html", "@/d/tomedecks/x y/index.html"}));
  EXPECT_EQ(root_searched_last(), "@/d");
  EXPECT_EQ(portal(""), (Found{0, "", "browser"}));
}

TEST_F(LookupPortal, MainPageNeedsOnlyItself) {
  write("d/tomedecks/index.html", "<html>");
  add_root(dir + "/d");
  EXPECT_EQ(portal(""), (Found{1, "file://@/d/tomedecks/index.html", ""}));
  EXPECT_EQ(portal("x"), (Found{0, "", ""}));
  EXPECT_EQ(tested_by([&] { portal(std::string(4090, 'n')); }), Words{}) << "longer than a buffer";
}

TEST_F(LookupPortal, BehindAUrl) {
  HttpServer server(Words{"/d/tomedecks/x/index.html", "/d/tomedecks/index.html"});
  add_root(server.url("/d"), "browser");
  EXPECT_EQ(portal("x"), (Found{1, server.url("/d/tomedecks/index.html?tomedeck=x"), "browser"}));
  EXPECT_EQ(portal(""), (Found{1, server.url("/d/tomedecks/index.html"), "browser"}));
  EXPECT_EQ(portal("y"), (Found{0, "", "browser"}));
}

class LookupPath : public LookupScene {
 protected:
  Found path(const char* name) {
    return find([&](char* out, char*) { return locator.FindPath(out, name); });
  }
};

TEST_F(LookupPath, FileBelowARootIsAUrl) {
  write("d/a.txt", "text");
  add_root("/missing");
  add_root(dir + "/d");
  EXPECT_EQ(tested_by([&] {
              EXPECT_EQ(path("/a.txt"), (Found{1, "file:///@/d/a.txt", kUntouched}));
            }),
            (Words{"/missing/a.txt", "@/d/a.txt"}));
  EXPECT_EQ(path("/b.txt"), (Found{0, kUntouched, kUntouched}));
  EXPECT_EQ(path("a.txt").result, 0) << "appended as it is";
}

TEST_F(LookupPath, BehindAUrlItIsProbed) {
  HttpServer server(Words{"/d/a.txt"});
  add_root(server.url("/d"));
  EXPECT_EQ(tested_by([&] { EXPECT_EQ(path("/a.txt"), (Found{1, server.url("/d/a.txt"), kUntouched})); }), Words{});
  EXPECT_EQ(path("/b.txt").result, 0);
}

TEST_F(LookupPath, WhatDoesNotFitIsAbsentAndNullFindsNothing) {
  add_root(dir);
  EXPECT_EQ(path(("/" + std::string(4095, 'n')).c_str()), (Found{0, kUntouched, kUntouched}));
  EXPECT_EQ(path(nullptr), (Found{0, kUntouched, kUntouched}));
  EXPECT_EQ(locator.FindPath(nullptr, "/a"), 0);
}

}  // namespace
