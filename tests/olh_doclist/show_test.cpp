#include <cstring>

#include "client/help_scene.h"
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
  std::string said_by(const std::function<void()>& work) {
    set("OLH_DEBUG", "1");
    setDebugVariable();
    std::string said = olh_test::standard_error_of(work);
    unset("OLH_DEBUG");
    setDebugVariable();
    return said;
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
  const struct {
    int viewer;
    std::string location;
    std::string tag;
  } cases[] = {
      {OLH_VIEWER_HTML, "", "t"},           {OLH_VIEWER_HTML, "file://" + fits, ""},
      {OLH_VIEWER_HTML, "file:///d", fits}, {OLH_VIEWER_PDF, "http://h/a.pdf", fits + "x"},
      {OLH_VIEWER_PDF, "/d/a.pdf", fits},   {OLH_VIEWER_TOMEDECK, "file:///d/index.html", std::string(700, ' ')},
  };
  for (const auto& test : cases) EXPECT_EQ(show(test.viewer, test.location, test.tag.c_str()), 2) << test.location;
  EXPECT_EQ(shown_urls() + read_documents(), "");
}

TEST_F(Show, AnUnknownViewerSaysSo) {
  OlhSetViewer(5, 0);
  EXPECT_EQ(said_by([this] {
              char viewer_path[] = "/bin/x";
              EXPECT_EQ(locator.showDocGotoTag("file:///d", nullptr, viewer_path), 2);
            }),
            "olh_docList::showDocGotoTag\n"
            "olh_docList::showDocGotoTag: viewer_path: /bin/x\n"
            "olh_docList::showDocGotoTag: failed: unknown viewer\n"
            "olh_docList::showDocGotoTag: done\n");
}

TEST_F(Show, ASearchOpensThePageOfItsScope) {
  const struct {
    std::string search_root;
    const char* scope;
    const char* name;
    std::string url;
  } cases[] = {
      {root, "lib", "", file_url("index.html#query=a%20b&tab=search")},
      {root, "doc", "guide", file_url("htmldocs/qelhelp.htm#context=guide&query=a%20b&tab=2&src=doc")},
      {root, "doc", "", file_url("index.html#query=a%20b&tab=search")},
      {root, "tdk", "x_td", file_url("index.html#tomedeck=x_td&query=a%20b&tab=search")},
      {root, "any", "a\\b,c", file_url("index.html#tomedeck=a/b%2Cc&query=a%20b&tab=search")},
      {"http://h:81/d", "doc", "g", "http://h:81/d/htmldocs/qelhelp.htm#context=g&query=a%20b&tab=2&src=doc"},
      {"", "orvn", "", OLH_SUPPORT_PORTAL_URL "tomedeck.cfm?query=a%20b&field=olh"},
      {"", "orvn", "x\\", OLH_SUPPORT_PORTAL_URL "tomedeck.cfm?query=a%20b&tdk=x\\&field=olh"},
  };
  std::string expected;
  for (const auto& test : cases) {
    test.search_root.copy(locator.mCurrentDocPath, OLH_BUFFER_SIZE - 1);
    locator.mCurrentDocPath[test.search_root.size()] = '\0';
    EXPECT_EQ(locator.HtmlSearch("a&b", test.scope, test.name), 0) << test.url;
    expected += test.url + "\n";
  }
  EXPECT_EQ(shown_urls(), expected);
}

TEST_F(Show, ASearchWithoutRootOrWordsOpensNothing) {
  const struct {
    const char* search_root;
    const char* query;
    const char* scope;
    int result;
  } cases[] = {
      {"", "a", "lib", 2}, {"/no/such/root", "a", "lib", 4}, {"/", "", "lib", 2}, {"/", nullptr, "lib", 2},
      {"/", "a", "", 2},   {"/", "a", nullptr, 2},
  };
  for (const auto& test : cases) {
    std::strncpy(locator.mCurrentDocPath, test.search_root, OLH_BUFFER_SIZE);
    EXPECT_EQ(locator.HtmlSearch(test.query, test.scope, ""), test.result);
  }
  std::strncpy(locator.mCurrentDocPath, "/", OLH_BUFFER_SIZE);
  EXPECT_EQ(locator.HtmlSearch(std::string(2100, 'q').c_str(), "lib", ""), 2);
  EXPECT_EQ(shown_urls(), "");
}

}  // namespace
