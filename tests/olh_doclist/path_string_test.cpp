#include "http_server.h"
#include "olh/support.h"
#include "path_texts.h"
#include "scratch.h"

namespace {

using olh_test::Root;

class PathStrings : public olh_test::Scratch {
 protected:
  ~PathStrings() override { locator.ClearPathList(list); }

  int split(std::string paths) {
    locator.ClearPathList(list);
    return locator.SplitString(paths.data(), nullptr, nullptr, list, nullptr);
  }

  // The elements of a string that are looked at as roots, in order.
  std::vector<std::string> offered(const std::string& paths) {
    set("OLH_DEBUG", "1");
    setDebugVariable();
    const std::string said = olh_test::standard_error_of([&] { split(paths); });
    std::vector<std::string> candidates;
    for (std::string& text : olh_test::lines_after("olh_docList::ValidDocPath: ", said))
      if (text != "done" && text != "failed: path does not exist" && text != "failed: path does not contain docs")
        candidates.push_back(std::move(text));
    return candidates;
  }

  olh_docList locator;
  OlhPathList* list = nullptr;
};

TEST_F(PathStrings, SlashRunsShrinkExceptBehindTheScheme) {
  const struct {
    const char* in;
    const char* out;
  } cases[] = {{"/opt//docs", "/opt/docs"},
               {"////a///b/", "/a/b/"},
               {"http://h//docs", "http://h/docs"},
               {"http:////h", "http:///h"},
               {"https://h//x", "https:/h/x"},
               {"a//http://b", "a/http:/b"},
               {"", ""}};
  for (const auto& expected : cases) {
    std::string text = expected.in;
    std::string out(text.size() + 1, 'x');
    locator.RemoveDuplicateSlash(text.data(), out.data());
    EXPECT_STREQ(out.c_str(), expected.out) << expected.in;
    locator.RemoveDuplicateSlash(text.data(), text.data());
    EXPECT_STREQ(text.c_str(), expected.out) << "in place: " << expected.in;
  }
}

TEST_F(PathStrings, ElementsAreOfferedInOrder) {
  using Texts = std::vector<std::string>;
  const struct {
    const char* paths;
    Texts elements;
  } cases[] = {
      {"/opt/docs/:/opt//b", {"/opt/docs", "/opt/b"}},
      {"::/a:::/b::", {"/a", "/b"}},
      {"  /a b  :\t/c", {"/a b", "\t/c"}},
      {"C:\\docs\\", {"C", "/docs"}},
      {"/", {"failed: invalid args"}},
      {"https://h/docs", {"https", "/h/docs"}},
      {"http://127.0.0.1/docs", {"http", "http://127.0.0.1/docs"}},
      {"http://127.0.0.1:1/docs", {"http", "http://127.0.0.1", "http://127.0.0.1:1/docs"}},
      {"http://127.0.0.1:/docs", {"http", "http://127.0.0.1", "/docs"}},
      {"http://127.0.0.1:/docs:1/x", {"http", "http://127.0.0.1", "/docs", "1/x"}},
      {"http:/a:/b", {"http", "http://a", "/b"}},
  };
  for (const auto& expected : cases) EXPECT_EQ(offered(expected.paths), expected.elements) << expected.paths;
}

TEST_F(PathStrings, AcceptedElementsCarryWhatTheStringBrings) {
  const std::string root = make_root("a");
  std::string paths = root + "/:" + dir + "/missing";
  char html[] = "browser";
  char pdf[] = "reader";
  char parent[] = "/p";
  EXPECT_EQ(locator.SplitString(paths.data(), html, pdf, list, parent), 4);
  EXPECT_EQ(olh_test::roots_of(list), (std::vector<Root>{{root, "browser", "reader", "/p"}}));
  EXPECT_EQ(split(root), 0);
  EXPECT_EQ(olh_test::roots_of(list), (std::vector<Root>{{root}}));
  EXPECT_EQ(split(""), 0);
  EXPECT_EQ(list, nullptr);
}

TEST_F(PathStrings, UrlWithPortIsJoinedAgain) {
  const olh_test::HttpServer server({"/docs/htmldocs/qelhelp.htm", "/more/htmldocs/qelhelp.htm"});
  const std::string local = make_root("a");
  EXPECT_EQ(split(server.url("/docs/") + ":" + local + ":" + server.url("//more")), 4);
  EXPECT_EQ(olh_test::paths_of(list), server.url("/docs") + " " + local + " " + server.url("/more"));
}

TEST_F(PathStrings, LongStringIsTakenElementByElement) {
  const std::string root = make_root("a");
  std::string paths = "http:" + std::string(6000, '/') + std::string(6000, 'h') + ":8080/docs";
  for (int i = 0; i < 2000; ++i) paths += ":" + root;
  EXPECT_EQ(split(paths), 4);
  EXPECT_EQ(olh_test::roots_of(list), std::vector<Root>(2000, {root}));
}

}  // namespace
