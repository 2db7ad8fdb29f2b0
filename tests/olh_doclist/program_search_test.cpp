#include "olh/support.h"
#include "scratch.h"

namespace {

class ProgramSearch : public olh_test::Scratch {
 protected:
  // "result path" of a search whose buffer is not empty.
  static std::string search(const char* program, const char* variable = nullptr) {
    char out[OLH_BUFFER_SIZE] = "left over";
    const int result = search_path(out, program, variable);
    return std::to_string(result) + " " + out;
  }
};

TEST_F(ProgramSearch, TheFirstExecutableAlongTheVariableWins) {
  write("one/tool", "not executable");
  make_directory("two/tool");
  const std::string tool = make_program("three/tool");
  make_program("four/tool");
  const std::string path = dir + "/one::" + dir + "\\two:" + dir + "\\three/:" + dir + "/four/";
  set("PATH", path);
  EXPECT_EQ(search("tool"), "1 " + tool);
  EXPECT_EQ(search("tool", ""), "1 " + tool);
  set("OLH_TEST_DIRECTORIES", dir + "/four/");
  EXPECT_EQ(search("tool", "OLH_TEST_DIRECTORIES"), "1 " + dir + "/four/tool");
  EXPECT_EQ(search("absent"), "0 ");
  EXPECT_EQ(search(nullptr), "0 ");
  EXPECT_EQ(search("tool", "OLH_TEST_UNSET"), "0 ");
  EXPECT_EQ(search(std::string(5000, 'x').c_str()), "0 ");
}

TEST_F(ProgramSearch, TheHomeDirectoryIsThereOrNot) {
  char out[OLH_BUFFER_SIZE] = "left over";
  EXPECT_EQ(GetHomeDirectory(out), 1);
  EXPECT_EQ(out, home);
  set("HOME", dir + "/absent");
  EXPECT_EQ(GetHomeDirectory(out), 0);
  EXPECT_EQ(out, dir + "/absent");
  for (const std::string& value : {std::string(), "/" + std::string(4095, 'h')}) {
    set("HOME", value);
    EXPECT_EQ(GetHomeDirectory(out), 0);
    EXPECT_STREQ(out, "");
  }
}

}  // namespace
