#include "olh/support.h"
#include "path_scene.h"

namespace {

using namespace olh_test;

class PathLists : public PathScene {
 protected:
  void append(Roots added) {
    for (Root& root : added)
      locator.AddTail(list, root.path.data(), root.html.data(), root.pdf.data(), root.parent.data());
  }
};

TEST_F(PathLists, TailTakesOneSlashOffTheCallersPath) {
  char path[] = "/opt/docs/";
  EXPECT_EQ(locator.AddTail(list, path, nullptr, nullptr, nullptr), 0);
  EXPECT_STREQ(path, "/opt/docs");
  append({{"/b//"}});
  EXPECT_EQ(roots(), (Roots{{"/opt/docs"}, {"/b/"}}));
}

TEST_F(PathLists, HeadIsPushedAndPopped) {
  append({{"/b"}});
  Root head = {"/a/", "browser", "reader", "/p"};
  EXPECT_EQ(locator.Push(list, head.path.data(), head.html.data(), head.pdf.data(), head.parent.data()), 0);
  EXPECT_EQ(roots(), (Roots{head, {"/b"}}));
  OlhPathList* popped = nullptr;
  EXPECT_EQ(locator.Pop(list, popped), 0);
  EXPECT_STREQ(popped->path, "/a/");
  EXPECT_EQ(paths(), "/b");
  popped->next = nullptr;
  locator.ClearPathList(popped);
}

TEST_F(PathLists, RepeatedRootsMerge) {
  const std::tuple<const char*, Roots, Roots> cases[] = {
      {"first place is kept", {{"/a"}, {"/b"}, {"/a"}, {"/c"}, {"/b"}}, {{"/a"}, {"/b"}, {"/c"}}},
      {"overrides are gained one by one, the earlier repetition first",
       {{"/a"}, {"/a", "", "r1"}, {"/a", "b2", "r2"}, {"/a", "b3", "r3"}},
       {{"/a", "b2", "r1"}}},
      {"own overrides stay", {{"/a", "b1"}, {"/a", "b2", "r2"}}, {{"/a", "b1", "r2"}}},
      {"case counts", {{"/a"}, {"/A"}}, {{"/a"}, {"/A"}}},
      {"a root is not its own parent", {{"/a", "", "", "/a"}, {"/b", "", "", "/a"}}, {{"/a"}, {"/b", "", "", "/a"}}},
      {"the parent of the first stays", {{"/a", "", "", "/p"}, {"/a", "", "", "/q"}}, {{"/a", "", "", "/p"}}},
  };
  for (const auto& [what, before, after] : cases) {
    append(before);
    locator.RemoveDuplicates(list);
    EXPECT_EQ(roots(), after) << what;
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
  EXPECT_EQ(roots().size(), 100000U);
}

TEST_F(PathLists, DefaultsAreCopiedWhole) {
  locator.CopyEnvironmentDefaults(1);
  EXPECT_EQ(list, nullptr);
  locator.AddEnvironmentVariables();
  append({{"/o", "b", "r", "/p"}});
  std::swap(list, locator.mDefaultPathList->overrideList);
  append({{"/e"}});
  std::swap(list, locator.mDefaultPathList->environmentList);
  for (const int which : {2, 1, 0, 3}) locator.CopyEnvironmentDefaults(which);
  const Roots copied = {{"/e"}, {"/o", "b", "r", "/p"}};
  EXPECT_EQ(roots(), copied);
  locator.ClearDefaultPathList();
  EXPECT_EQ(locator.mDefaultPathList->overrideList, nullptr);
  EXPECT_EQ(locator.mDefaultPathList->environmentList, nullptr);
  EXPECT_EQ(roots(), copied);
}

}  // namespace
