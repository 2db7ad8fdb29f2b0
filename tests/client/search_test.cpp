#include "help_scene.h"

namespace {

using olh_test::HelpScene;

TEST_F(HelpScene, TheScopeChoosesThePageThatSearches) {
  add_main_portal();
  add_portal("gear_td");
  add_manual("guide");
  EXPECT_EQ(OlhSearch("a&b", nullptr), OLH_RESULT_OK);
  EXPECT_EQ(OlhSearch("wheel", "guide"), OLH_RESULT_OK);
  EXPECT_EQ(OlhSearch("wheel", "gear_td"), OLH_RESULT_OK);
  EXPECT_EQ(OlhSearch("wheel", "orvane"), OLH_RESULT_OK);
  EXPECT_EQ(shown_urls(),
            "file://@/docs/index.html#query=a%20b&tab=search\n"
            "file://@/docs/htmldocs/qelhelp.htm#context=guide&query=wheel&tab=2&src=doc\n"
            "file://@/docs/index.html#tomedeck=gear_td&query=wheel&tab=search\n" OLH_SUPPORT_PORTAL_URL
            "tomedeck.cfm?query=wheel&field=olh\n");
}

TEST_F(HelpScene, WhatCannotBeSearchedOpensNothing) {
  add_pdf("paper");
  const std::tuple<const char*, const char*, int> table[] = {
      {"", "orvane", 3}, {nullptr, nullptr, 3}, {"x", nullptr, 4},
      {"x", "paper", 4}, {"x", "absent", 4},    {"x", "Orvane", 4},
  };
  for (const auto& [query, scope, result] : table)
    EXPECT_EQ(OlhSearch(query, scope), result) << (scope ? scope : "-");
  EXPECT_EQ(browser.invocations().size(), 0U);
}

}  // namespace
