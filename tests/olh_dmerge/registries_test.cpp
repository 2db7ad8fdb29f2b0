#include "registries.h"
#include "dmerge_scene.h"

namespace {

using Registries = olh_test::DmergeScene;

TEST_F(Registries, OnlyAFileThatIsThereIsRegistered) {
  dmergeCallback = olh_test::hear;
  std::string missing = in_root("missing");
  EXPECT_EQ(registerNewFile(missing.data()), 0);
  EXPECT_EQ(registerNewFile(nullptr), 0);
  EXPECT_EQ(numRegisteredFiles, 0);
  put("sub/list.js", "x");
  std::string named = in_root("sub/");
  EXPECT_EQ(registerNewFile(named.data()), 7) << "the callback's result";
  EXPECT_EQ(olh_test::heard.size(), 1U);
  EXPECT_EQ(named.back(), '/') << "the caller's string is cleaned only in the record";
  EXPECT_EQ(registeredFilesHead->path, in_root("sub"));
}

TEST_F(Registries, NewestFirstAndFreedWhole) {
  char first[] = "a";
  char second[] = "b";
  addToFoundTdList(first);
  addToFoundTdList(second);
  addToFoundTdList(nullptr);
  EXPECT_STREQ(foundHandleListHead->name, "b");
  EXPECT_EQ(inFoundList("a") + inFoundList("b") + inFoundList("A") + inFoundList(nullptr), 2);
  olh::add_document("t", "n", olh::kPdfType);
  olh::add_pdf_title("t", "n");
  dmergeCallback = olh_test::hear;
  dmerge_free();
  EXPECT_EQ(dmergeCallback, olh_test::hear) << "only dmerge_init forgets it";
  EXPECT_TRUE(lleHead == nullptr && pdfTitlesHead == nullptr && foundHandleListHead == nullptr);
  EXPECT_EQ(numLleEntries + numpdfTitlesEntries, 0);
  dmerge_init();
  EXPECT_EQ(dmergeCallback, nullptr);
}

TEST_F(Registries, EntriesCompareByTheBytesOfTheirTitles) {
  char titles[][2] = {"Z", "a", "\xc3"};
  LibListEntry z = {titles[0], nullptr, nullptr, nullptr};
  LibListEntry a = {titles[1], nullptr, nullptr, nullptr};
  LibListEntry h = {titles[2], nullptr, nullptr, nullptr};
  LibListEntry none = {};
  EXPECT_LT(compare_entries(&z, &a), 0);
  EXPECT_GT(compare_entries(&h, &a), 0);
  EXPECT_EQ(compare_entries(&a, &a), 0);
  EXPECT_LT(compare_entries(&none, &a), 0);
}

}  // namespace
