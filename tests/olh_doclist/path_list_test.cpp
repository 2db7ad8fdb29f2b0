#include "olh/support.h"
#include "path_texts.h"
#include "scratch.h"

namespace {

using olh_test::Root;

class PathLists : public olh_test::Scratch {
 protected:
  ~PathLists() override { locator.ClearPathList(list); }

  void append(std::vector<Root> roots) {
    for (Root& root : roots)
      locator.AddTail(list, root.path.data(), root.html.data(), root.pdf.data(), root.parent.data());
  }

  olh_docList locator;
  OlhPathList* list = nullptr;
};

TEST_F(PathLists, TailTakesOneSlashOffTheCallersPath) {
  char path[] = "/opt/docs/";
  EXPECT_EQ(locator.AddTail(list, path, nullptr, nullptr, nullptr), 0);
  EXPECT_STREQ(path, "/opt/docs");
  char doubled[] = "/b//";
  locator.AddTail(list, doubled, nullptr, nullptr, nullptr);
  EXPECT_EQ(olh_test::roots_of(list), (std::vector<Root>{{"/opt/docs"}, {"/b/"}}));
}

TEST_F(PathLists, HeadIsPushedAndPopped) {
  append({{"/b"}});
  char path[] = "/a/";
  char html[] = "browser";
  char pdf[] = "reader";
  char parent[] = "/p";
  EXPECT_EQ(locator.Push(list, path, html, pdf, parent), 0);
  EXPECT_EQ(olh_test::roots_of(list), (std::vector<Root>{{"/a/", "browser", "reader", "/p"}, {"/b"}}));
  OlhPathList* popped = nullptr;
  EXPECT_EQ(locator.Pop(list, popped), 0);
  EXPECT_STREQ(popped->path, "/a/");
  EXPECT_EQ(olh_test::paths_of(list), "/b");
  popped->next = nullptr;
  locator.ClearPathList(popped);
}

TEST_F(PathLists, RepeatedRootsMerge) {
  const struct {
    const char* what;
    std::vector<Root> before;
    std::vector<Root> after;
  } cases[] = {
      {"first place is kept", {{"/a"}, {"/b"}, {"/a"}, {"/c"}, {"/b"}}, {{"/a"}, {"/b"}, {"/c"}}},
      {"overrides are gained one by one, the earlier repetition first",
       {{"/a"}, {"/a", "", "r1"}, {"/a", "b2", "r2"}, {"/a", "b3", "r3"}},
       {{"/a", "b2", "r1"}}},
      {"own overrides stay", {{"/a", "b1"}, {"/a", "b2", "r2"}}, {{"/a", "b1", "r2"}}},
      {"case counts", {{"/a"}, {"/A"}}, {{"/a"}, {"/A"}}},
      {"a root is not its own parent", {{"/a", "", "", "/a"}, {"/b", "", "", "/a"}}, {{"/a"}, {"/b", "", "", "/a"}}},
      {"the parent of the first stays", {{"/a", "", "", "/p"}, {"/a", "", "", "/q"}}, {{"/a", "", "", "/p"}}},
  };
  for (const auto& expected : cases) {
    append(expected.before);
    locator.RemoveDuplicates(list);
    EXPECT_EQ(olh_test::roots_of(list), expected.after) << expected.what;
    locator.ClearPathList(list);
  }
}

TEST_F(PathLists, HundredThousandRootsAreMergedWithoutComparingEachWithEach) {
  char none[] = "";
  for (int i = 0; i < 200000; ++i) {
    std::string path = "/docs/" + std::to_string(i % 100000);
    ASSERT_EQ(locator.Push(list, path.data(), none, none, none), 0);
  }
  locator.RemoveDuplicates(list);
  std::size_t count = 0;
  for (const OlhPathList* node = list; node != nullptr; node = node->next) ++count;
  EXPECT_EQ(count, 100000U);
}

TEST_F(PathLists, DefaultsAreCopiedWhole) {
  locator.CopyEnvironmentDefaults(1);
  EXPECT_EQ(locator.mDocPathList, nullptr);
  locator.AddEnvironmentVariables();
  append({{"/o", "b", "r", "/p"}});
  std::swap(list, locator.mDefaultPathList->overrideList);
  append({{"/e"}});
  std::swap(list, locator.mDefaultPathList->environmentList);
  for (const int which : {2, 1, 0, 3}) locator.CopyEnvironmentDefaults(which);
  EXPECT_EQ(olh_test::roots_of(locator.mDocPathList), (std::vector<Root>{{"/e"}, {"/o", "b", "r", "/p"}}));
  locator.ClearDefaultPathList();
  EXPECT_EQ(locator.mDefaultPathList->overrideList, nullptr);
  EXPECT_EQ(locator.mDefaultPathList->environmentList, nullptr);
  EXPECT_EQ(olh_test::paths_of(locator.mDocPathList), "/e /o");
}

}  // namespace
