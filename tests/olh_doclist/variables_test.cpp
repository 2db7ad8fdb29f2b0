#include <cstring>

#include "olh/support.h"
#include "olh_doclist.h"
#include "scratch.h"

namespace {

class Variables : public olh_test::Scratch {
 protected:
  // What a lookup answers: its result, and what it leaves in a buffer that was not empty.
  std::pair<int, std::string> lookup(const char* name) {
    char value[OLH_BUFFER_SIZE] = "left over";
    const int result = locator.GetOlhVariable(value, name);
    return {result, value};
  }

  std::string names_in_store() const {
    std::string names;
    for (const OlhVariable* node = locator.mVariableList; node != nullptr; node = node->next)
      names += std::string(node->name) + " ";
    return names;
  }

  olh_docList locator;
};

using Answer = std::pair<int, std::string>;

TEST_F(Variables, StoreShadowsTheEnvironment) {
  set("QEL_TEST", "from environment");
  EXPECT_EQ(lookup("QEL_TEST"), Answer(1, "from environment"));
  EXPECT_EQ(locator.SetOlhVariable("QEL_TEST", "from store"), 1);
  EXPECT_EQ(lookup("QEL_TEST"), Answer(1, "from store"));
  EXPECT_EQ(lookup("qel_test"), Answer(0, ""));
  EXPECT_EQ(locator.SetOlhVariable("QEL_TEST", ""), 1);
  EXPECT_EQ(lookup("QEL_TEST"), Answer(1, "from environment"));
}

TEST_F(Variables, EmptyOrTooLongCountsAsNotSet) {
  const std::string fits(OLH_BUFFER_SIZE - 1, 'v');
  const std::string too_long(OLH_BUFFER_SIZE, 'v');
  set("QEL_TEST", "");
  EXPECT_EQ(lookup("QEL_TEST"), Answer(0, ""));
  set("QEL_TEST", too_long);
  EXPECT_EQ(lookup("QEL_TEST"), Answer(0, ""));
  set("QEL_TEST", fits);
  EXPECT_EQ(lookup("QEL_TEST"), Answer(1, fits));
  locator.SetOlhVariable("QEL_TEST", too_long.c_str());
  EXPECT_EQ(lookup("QEL_TEST"), Answer(0, ""));
}

TEST_F(Variables, RemovingOneKeepsTheOthers) {
  for (const char* const removed : {"A", "B", "C"}) {
    for (const char* const name : {"C", "B", "A"}) locator.SetOlhVariable(name, "1");
    ASSERT_EQ(names_in_store(), "A B C ");
    EXPECT_EQ(locator.SetOlhVariable(removed, nullptr), 1);
    std::string expected = "A B C ";
    expected.erase(expected.find(removed), 2);
    EXPECT_EQ(names_in_store(), expected);
    locator.ClearOlhVariables(locator.mVariableList);
    EXPECT_EQ(locator.mVariableList, nullptr);
  }
}

TEST_F(Variables, NewValueReplacesTheOldInItsPlace) {
  locator.SetOlhVariable("A", "1");
  locator.SetOlhVariable("B", "2");
  EXPECT_EQ(locator.SetOlhVariable("A", "3"), 1);
  EXPECT_EQ(names_in_store(), "B A ");
  EXPECT_EQ(lookup("A"), Answer(1, "3"));
  EXPECT_EQ(locator.SetOlhVariable("C", ""), 1);
  EXPECT_EQ(names_in_store(), "B A ");
}

TEST_F(Variables, InvalidArgumentsAreRefused) {
  EXPECT_EQ(locator.GetOlhVariable(nullptr, "A"), 0);
  EXPECT_EQ(lookup(nullptr), Answer(0, ""));
  EXPECT_EQ(lookup(""), Answer(0, ""));
  EXPECT_EQ(locator.SetOlhVariable("", "1"), 0);
  EXPECT_EQ(locator.SetOlhVariable(nullptr, "1"), 0);
}

TEST_F(Variables, DisplayTypeIsOneOfThreeNames) {
  const std::tuple<const char*, int, int> cases[] = {
      {"normal", OLH_DISPLAY_NORMAL, 1}, {"TOPIC", OLH_DISPLAY_TOPIC, 1},   {"Popup", OLH_DISPLAY_POPUP, 1},
      {" popup", OLH_DISPLAY_NORMAL, 0}, {"topics", OLH_DISPLAY_NORMAL, 0}, {"2", OLH_DISPLAY_NORMAL, 0}};
  for (const auto& [value, type, fixed] : cases) {
    olh_docList fresh;
    set("QEL_OLH_DISPLAY_TYPE", value);
    fresh.CheckOlhVariables();
    EXPECT_EQ(fresh.mDisplayType, type) << value;
    EXPECT_EQ(fresh.mbDisplayTypeFixed, fixed) << value;
  }
}

}  // namespace
