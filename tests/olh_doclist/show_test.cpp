#include <cstring>

#include "help_scene.h"
#include "olh_doclist.h"

namespace {

// A browser that runs, and a reader; the locator is the test's own.
class Show : public olh_test::HelpScene {
 protected:
  int show(int viewer, const std::string& location, const char* tag) {
    OlhSetViewer(viewer, 0);
    char viewer_path[OLH_BUFFER_SIZE] = "";
    return locator.showDocGotoTag(location.c_str(), tag, viewer_path);
  }

  olh_docList locator;
};

TEST_F(Show, EachKindReachesItsViewer) {
  EXPECT_EQ(show(OLH_VIEWER_HTML, "file:///d/index.htm", "a b"), 0);
  EXPECT_EQ(show(OLH_VIEWER_PDF, "http://h/a b.pdf", "Getting Started"), 0);
  EXPECT_EQ(show(OLH_VIEWER_PDF, "file:///d/a.pdf", nullptr), 0);
  EXPECT_EQ(show(OLH_VIEWER_TOMEDECK, "file:///d/tomedecks/index.html?tomedeck=x", "a (b)"), 0);
  EXPECT_EQ(show(OLH_VIEWER_TOMEDECK, "file:///d/tomedecks/index.html", "search"), 0);
  EXPECT_EQ(show(OLH_VIEWER_TOMEDECK, "file:///d/portal/index.html", "search"), 0);
  EXPECT_EQ(show(OLH_VIEWER_TOMEDECK, "file:///d/tomedecks/index.html?tomedeck=x", ""), 0);
  EXPECT_EQ(shown_urls(),
            "file:///d/index.htm#context=&topic=ab\n"
            "http://h/a%20b.pdf#M8.newlink.Getting.Started\n"
            "file:///d/a.pdf\n"
            "file:///d/tomedecks/index.html?tomedeck=x&tab=a%20%28b%29\n"
            "file:///d/tomedecks/index.html?tab=search\n"
            "file:///d/portal/index.html&tab=search\n"
            "file:///d/tomedecks/index.html?tomedeck=x\n");
  EXPECT_EQ(show(OLH_VIEWER_TOMEDECK, "", ""), 0) << "the browser, without a page";
  EXPECT_TRUE(reader.invocations().empty());
  EXPECT_EQ(show(OLH_VIEWER_PDF, "/d/a b.pdf", "Getting Started"), 0);
  EXPECT_EQ(read_documents(), "-openInNewWindow /a nameddest=M8.newlink.Getting.Started /d/a b.pdf \n");
}

TEST_F(Show, NoUrlIsAFailureAndOpensNothing) {
  const std::string fits(2047, 'x');
  const std::tuple<int, std::string, std::string> cases[] = {
      {5, "file:///d", ""},
      {OLH_VIEWER_HTML, "", "t"},
      {OLH_VIEWER_HTML, "file://" + fits, ""},
      {OLH_VIEWER_HTML, "file:///d", fits},
      {OLH_VIEWER_PDF, "http://h/a.pdf", fits + "x"},
      {OLH_VIEWER_PDF, "/d/a.pdf", fits},
      {OLH_VIEWER_TOMEDECK, "file:///d/index.html", std::string(700, ' ')},
  };
  for (const auto& [viewer, location, tag] : cases) EXPECT_EQ(show(viewer, location, tag.c_str()), 2) << location;
  EXPECT_EQ(shown_urls() + read_documents(), "");
}

TEST_F(Show, ASearchOpensThePageOfItsScope) {
  const std::tuple<std::string, const char*, const char*, std::string> cases[] = {
      {root, "lib", "", "file://@/docs/index.html#query=a%20b&tab=search\n"},
      {root, "doc", "guide", "file://@/docs/htmldocs/qelhelp.htm#context=guide&query=a%20b&tab=2&src=doc\n"},
      {root, "doc", "", "file://@/docs/index.html#query=a%20b&tab=search\n"},
      {root, "tdk", "x_td", "file://@/docs/index.html#tomedeck=x_td&query=a%20b&tab=search\n"},
      {root, "any", "a\\b,c", "file://@/docs/index.html#tomedeck=a/b%2Cc&query=a%20b&tab=search\n"},
      {"http://h:81/d", "doc", "g", "http://h:81/d/htmldocs/qelhelp.htm#context=g&query=a%20b&tab=2&src=doc\n"},
      {"", "orvn", "", olh_test::support_page("tomedeck.cfm?query=a%20b&field=olh")},
      {"", "orvn", "x\\", olh_test::support_page("tomedeck.cfm?query=a%20b&tdk=x\\&field=olh")},
  };
  std::string expected;
  for (const char* const query : {"a&b", "a?b", "a#b"})
    for (const auto& [search_root, scope, name, url] : cases) {
      std::strncpy(locator.mCurrentDocPath, search_root.c_str(), OLH_BUFFER_SIZE);
      EXPECT_EQ(locator.HtmlSearch(query, scope, name), url.empty() ? 4 : 0) << query << url;
      expected += url;
    }
  EXPECT_EQ(shown_urls(), expected);
}

TEST_F(Show, ASearchWithoutRootOrWordsOpensNothing) {
  const std::string too_long(2100, 'q');
  const std::tuple<const char*, const char*, const char*, int> cases[] = {
      {"", "a", "lib", 2},
      {"/no/such/root", "a", "lib", 4},
      {"/", "", "lib", 2},
      {"/", nullptr, "lib", 2},
      {"/", "a", "", 2},
      {"/", "a", nullptr, 2},
      {"/", too_long.c_str(), "lib", 2},
  };
  for (const auto& [search_root, query, scope, result] : cases) {
    std::strncpy(locator.mCurrentDocPath, search_root, OLH_BUFFER_SIZE);
    EXPECT_EQ(locator.HtmlSearch(query, scope, ""), result);
  }
  EXPECT_EQ(shown_urls(), "");
}

}  // namespace
