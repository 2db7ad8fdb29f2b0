#include <filesystem>

#include "olh/support.h"
#include "scratch.h"

namespace {

TEST(Strings, PathsHaveTheSlashOfUnix) {
  EXPECT_EQ(PATHSLASH, '/');
  EXPECT_EQ(NONPATHSLASH, '\\');
}

TEST(Strings, AreChangedInPlace) {
  using Operation = void (*)(char*) noexcept;
  const std::tuple<Operation, const char*, const char*> table[] = {
      {dirslash, "D:\\docs\\manuals\\", "D:/docs/manuals"},
      {dirslash, "/", ""},
      {dirslash, "\\", ""},
      {dirslash, "a//", "a/"},
      {dirslash, "a/b", "a/b"},
      {dirslash, "", ""},
      {urlslash, "file://host\\dir\\", "file://host/dir"},
      {remove_leaf, "a/b/c.pdf", "a/b"},
      {remove_leaf, "a/b/", "a/b"},
      {remove_leaf, "/top", ""},
      {remove_leaf, "name.pdf", "name.pdf"},
      {remove_leaf, "a\\b", "a\\b"},
      {downcase, "Doc_Name.PDF", "doc_name.pdf"},
      {downcase, "\xC4-\xE4", "\xC4-\xE4"}};
  for (const auto& [operation, before, after] : table) {
    std::string text = before;
    operation(text.data());
    EXPECT_STREQ(text.c_str(), after) << before;
  }
}

TEST(Strings, UrlsBeginWithOneOfThreeSchemesInLowerCase) {
  const std::pair<const char*, int> table[] = {{"https://x/y", 1}, {"http://", 1},   {"file:///d", 1},
                                               {"HTTP://x", 0},    {" http://x", 0}, {"", 0},
                                               {"ftp://x", 0},     {"http:/x", 0},   {nullptr, 0}};
  for (const auto& [text, expected] : table) EXPECT_EQ(is_url(text), expected) << (text ? text : "null");
}

TEST(Strings, PositionIsAnOffsetOrNinetyNine) {
  const std::tuple<const char*, const char*, long> table[] = {{"http://h/d", "http://", 0},
                                                              {"/doc/http://h", "http://", 5},
                                                              {"/doc/x", "http://", 99},
                                                              {"", "", 99},
                                                              {"", "x", 99},
                                                              {"abc", "", 0}};
  for (const auto& [text, needle, expected] : table) {
    std::string copy = text;
    EXPECT_EQ(string_pos(copy.data(), needle), expected) << text << " " << needle;
    EXPECT_EQ(copy, text);
  }
  EXPECT_EQ(string_pos(nullptr, "x"), 99);
}

using FileTests = olh_test::Scratch;

TEST_F(FileTests, ExecutablesAreFilesThatMayBeRun) {
  const std::string program = make_program("tool");
  const std::string link = dir + "/link";
  std::filesystem::create_symlink(program, link);
  for (const std::string& name : {program, link}) EXPECT_EQ(exe_exists(name.c_str()), 1) << name;
  for (const std::string& name : {write("text", "x"), dir, dir + "/absent"}) EXPECT_EQ(exe_exists(name.c_str()), 0);
  EXPECT_EQ(exe_exists(nullptr), 0);
}

TEST_F(FileTests, PathsExistWhenTheyCanBeRead) {
  EXPECT_EQ(path_exists(dir.c_str()), 1);
  EXPECT_EQ(path_exists(write("text", "x").c_str()), 1);
  EXPECT_EQ(path_exists((dir + "/absent").c_str()), 0);
  EXPECT_EQ(path_exists(""), 0);
}

}  // namespace
