#include "http_server.h"
#include "lookup_scene.h"

namespace {

using olh_test::Found;
using olh_test::HttpServer;
using olh_test::kUntouched;
using olh_test::tested_by;
using Names = std::vector<std::string>;

using LookupPortal = olh_test::LookupScene;

TEST_F(LookupPortal, NamedPortalIsTheMainPageWithItsNameInTheQuery) {
  write("d/tomedecks/x y/index.html", "<html>");
  add_root("/missing", "none");
  add_root(dir + "/d", "browser");
  EXPECT_EQ(
      tested_by([&] {
        EXPECT_EQ(portal("x y"), (Found{1, "file://" + dir + "/d/tomedecks/index.html?tomedeck=x y", "browser"}));
      }),
      (Names{"/missing/tomedecks/x y/index.html", dir + "/d/tomedecks/x y/index.html"}));
  EXPECT_EQ(locator.mCurrentDocPath, dir + "/d");
  EXPECT_EQ(portal(""), (Found{0, "", "browser"}));
}

TEST_F(LookupPortal, MainPageNeedsOnlyItself) {
  write("d/tomedecks/index.html", "<html>");
  add_root(dir + "/d");
  EXPECT_EQ(portal(""), (Found{1, "file://" + dir + "/d/tomedecks/index.html", ""}));
  EXPECT_EQ(portal("x"), (Found{0, "", ""}));
}

TEST_F(LookupPortal, BehindAUrl) {
  HttpServer server(Names{"/d/tomedecks/x/index.html", "/d/tomedecks/index.html"});
  add_root(server.url("/d"), "browser");
  EXPECT_EQ(portal("x"), (Found{1, server.url("/d/tomedecks/index.html?tomedeck=x"), "browser"}));
  EXPECT_EQ(portal(""), (Found{1, server.url("/d/tomedecks/index.html"), "browser"}));
  const std::string refused = server.url("/d/tomedecks/y/index.html");
  EXPECT_EQ(tested_by([&] { EXPECT_EQ(portal("y"), (Found{0, "", "browser"})); }), Names{refused});
}

TEST_F(LookupPortal, ForgetsTheContextAndPassesNamelessRootsOver) {
  html("http://h/x");
  add_root("", "browser");
  EXPECT_EQ(tested_by([&] { EXPECT_EQ(portal("x"), (Found{0, "", "browser"})); }), Names{});
  EXPECT_EQ(locator.mContext, nullptr);
}

TEST_F(LookupPortal, WhatDoesNotFitIsAbsent) {
  add_root(dir);
  EXPECT_EQ(tested_by([&] { EXPECT_EQ(portal(std::string(4090, 'n')), (Found{0, "", ""})); }), Names{});
}

TEST_F(LookupPortal, NullArguments) {
  write("tomedecks/index.html", "<html>");
  add_root(dir, "browser");
  EXPECT_EQ(find([&](char* o, char*) { return locator.FindTomeDeck(o, "", nullptr); }).result, 1);
  EXPECT_EQ(find([&](char*, char* v) { return locator.FindTomeDeck(nullptr, "", v); }),
            (Found{0, kUntouched, kUntouched}));
  EXPECT_EQ(said_by([&] {
              EXPECT_EQ(find([&](char* o, char* v) { return locator.FindTomeDeck(o, nullptr, v); }),
                        (Found{0, kUntouched, kUntouched}));
            }),
            "olh_docList::FindTomeDeck\nolh_docList::FindTomeDeck: failed: invalid arg\n");
}

TEST_F(LookupPortal, DebugLines) {
  write("tomedecks/index.html", "<html>");
  add_root(dir, "browser");
  const std::string start = "olh_docList::FindTomeDeck\nolh_docList::FindTomeDeck: Looking for ";
  EXPECT_EQ(said_by([&] { portal(""); }), start + " at: " + dir + "\nolh_docList::FindTomeDeck: done\n");
  EXPECT_EQ(said_by([&] { portal("x"); }),
            start + "x at: " + dir + "\nolh_docList::FindTomeDeck: failed: not found\n");
}

class LookupPath : public LookupPortal {
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
              EXPECT_EQ(path("/a.txt"), (Found{1, "file:///" + dir + "/d/a.txt", kUntouched}));
            }),
            (Names{"/missing/a.txt", dir + "/d/a.txt"}));
  EXPECT_EQ(path("/b.txt"), (Found{0, kUntouched, kUntouched}));
  EXPECT_EQ(path("a.txt").result, 0) << "appended as it is";
}

TEST_F(LookupPath, BehindAUrlItIsProbed) {
  HttpServer server(Names{"/d/a.txt"});
  add_root(server.url("/d"));
  EXPECT_EQ(tested_by([&] { EXPECT_EQ(path("/a.txt"), (Found{1, server.url("/d/a.txt"), kUntouched})); }), Names{});
  EXPECT_EQ(path("/b.txt").result, 0);
}

TEST_F(LookupPath, WhatDoesNotFitIsAbsentAndNullFindsNothing) {
  add_root(dir);
  EXPECT_EQ(path(("/" + std::string(4095, 'n')).c_str()), (Found{0, kUntouched, kUntouched}));
  EXPECT_EQ(locator.FindPath(nullptr, "/a"), 0);
  EXPECT_EQ(said_by([&] { EXPECT_EQ(path(nullptr).result, 0); }),
            "olh_docList::FindPath\nolh_docList::FindPath: done\n");
}

}  // namespace
