#include <sstream>

#include "http_server.h"
#include "olh/support.h"
#include "path_scene.h"

namespace {

using namespace olh_test;

class PathStrings : public PathScene {
 protected:
  int split(std::string text) {
    locator.ClearPathList(list);
    return locator.SplitString(text.data(), nullptr, nullptr, list, nullptr);
  }

  // The elements of a string that are looked at as roots, in order.
  Words offered(const std::string& text) {
    const std::string prefix = "olh_docList::ValidDocPath: ";
    std::istringstream lines(debug_lines_of([&] { split(text); }));
    Words elements;
    for (std::string line; std::getline(lines, line);)
      if (line.starts_with(prefix) && !line.starts_with(prefix + "failed: path") && line != prefix + "done")
        elements.push_back(line.substr(prefix.size()));
    return elements;
  }
};

TEST_F(PathStrings, SlashRunsShrinkExceptBehindTheScheme) {
  const std::pair<std::string, const char*> cases[] = {{"/opt//docs", "/opt/docs"},
                                                       {"////a///b/", "/a/b/"},
                                                       {"http://h//docs", "http://h/docs"},
                                                       {"http:////h", "http:///h"},
                                                       {"https://h//x", "https:/h/x"},
                                                       {"a//http://b", "a/http:/b"},
                                                       {"", ""}};
  for (const auto& [in, out] : cases) {
    std::string text = in;
    std::string copy(text.size() + 1, 'x');
    locator.RemoveDuplicateSlash(text.data(), copy.data());
    EXPECT_STREQ(copy.c_str(), out) << in;
    locator.RemoveDuplicateSlash(text.data(), text.data());
    EXPECT_STREQ(text.c_str(), out) << "in place: " << in;
  }
}

TEST_F(PathStrings, ElementsAreOfferedInOrder) {
  const std::pair<const char*, Words> cases[] = {
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
  for (const auto& [text, elements] : cases) EXPECT_EQ(offered(text), elements) << text;
}

TEST_F(PathStrings, AcceptedElementsCarryWhatTheStringBrings) {
  const std::string root = make_root("a");
  std::string text = root + "/:" + at("missing");
  char html[] = "browser";
  char pdf[] = "reader";
  char parent[] = "/p";
  EXPECT_EQ(locator.SplitString(text.data(), html, pdf, list, parent), 4);
  EXPECT_EQ(roots(), (Roots{{"@/a", "browser", "reader", "/p"}}));
  EXPECT_EQ(split(root), 0);
  EXPECT_EQ(roots(), Roots{{"@/a"}});
  EXPECT_EQ(split(""), 0);
  EXPECT_EQ(list, nullptr);
}

TEST_F(PathStrings, UrlWithPortIsJoinedAgain) {
  const HttpServer server({"/docs/htmldocs/qelhelp.htm", "/more/htmldocs/qelhelp.htm"});
  EXPECT_EQ(split(server.url("/docs/") + ":" + make_root("a") + ":" + server.url("//more")), 4);
  EXPECT_EQ(paths(), server.url("/docs") + " @/a " + server.url("/more"));
}

TEST_F(PathStrings, LongStringIsTakenElementByElement) {
  const std::string root = make_root("a");
  std::string text = "http:" + std::string(6000, '/') + std::string(6000, 'h') + ":8080/docs";
  for (int i = 0; i < 2000; ++i) text += ":" + root;
  EXPECT_EQ(split(text), 4);
  EXPECT_EQ(roots(), Roots(2000, {"@/a"}));
}

}  // namespace
