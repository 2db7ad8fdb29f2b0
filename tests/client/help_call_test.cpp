#include <filesystem>

#include "help_scene.h"

namespace {

using olh_test::HelpScene;

TEST_F(HelpScene, ShowsAnHtmlTopicInTheRunningBrowser) {
  add_manual("guide");
  EXPECT_EQ(OlhHelpCall("guide", "Getting Started", OLH_DISPLAY_POPUP), OLH_RESULT_OK);
  EXPECT_EQ(shown_urls(), "file://@/docs/htmldocs/guide/index.htm#context=&topic=GettingStarted&single=popup\n");
  EXPECT_EQ(OlhGetCurrentViewer(), OLH_VIEWER_HTML);
}

TEST_F(HelpScene, ShowsAPdfAtItsDestination) {
  add_pdf("guide");
  EXPECT_EQ(OlhHelpCall("guide", "Getting Started!", OLH_DISPLAY_NORMAL), OLH_RESULT_OK);
  EXPECT_EQ(read_documents(), "-openInNewWindow /a nameddest=M8.newlink.Getting.Started @/docs/pdfdocs/guide.pdf \n");
  EXPECT_EQ(OlhGetCurrentViewer(), OLH_VIEWER_PDF);
}

TEST_F(HelpScene, ShowsAPortalAtItsTab) {
  add_main_portal();
  add_portal("gear_td");
  EXPECT_EQ(OlhHelpCall("gear_td", "search", OLH_DISPLAY_NORMAL), OLH_RESULT_OK);
  EXPECT_EQ(OlhTomeDeck("gear_td", nullptr), OLH_RESULT_OK);
  EXPECT_EQ(OlhTomeDeck(nullptr, "libraries"), OLH_RESULT_OK);
  EXPECT_EQ(shown_urls(),
            "file://@/docs/tomedecks/index.html?tomedeck=gear_td&tab=search\n"
            "file://@/docs/tomedecks/index.html?tomedeck=gear_td\n"
            "file://@/docs/tomedecks/index.html?tab=libraries\n");
  EXPECT_EQ(OlhGetCurrentViewer(), OLH_VIEWER_TOMEDECK);
}

TEST_F(HelpScene, TheBookcaseIsAPdfWhateverTheViewerOrder) {
  add_pdf("_bk_qel");
  add_manual("_bk_qel");
  EXPECT_EQ(OlhBookcase(nullptr, "Tools"), OLH_RESULT_OK);
  EXPECT_EQ(read_documents(), "-openInNewWindow /a nameddest=M8.newlink.Tools @/docs/pdfdocs/_bk_qel.pdf \n");
  EXPECT_EQ(OlhGetCurrentViewer(), OLH_VIEWER_PDF);
}

TEST_F(HelpScene, GotoTagIsAHelpCallWithTheNormalDisplay) {
  add_manual("guide");
  const std::string log = dir + "/log";
  set("OLH_LOG_HELP", log);
  SetOlhDisplayType(OLH_DISPLAY_POPUP);
  EXPECT_EQ(OlhDocGotoTag("guide", "Intro"), OLH_RESULT_OK);
  EXPECT_EQ(shown_urls(), "file://@/docs/htmldocs/guide/index.htm#context=&topic=Intro\n");
  EXPECT_EQ(olh_test::read_file(log),
            "OlhDocGotoTag( \"guide\", \"Intro\" );\n"
            "OlhHelpCall( \"guide\", \"Intro\", \"OLH_DISPLAY_NORMAL\" );\n"
            "OlhHelpCall returned 0\n"
            "OlhDocGotoTag returned 0\n");
}

TEST_F(HelpScene, AFixedDisplayTypeWinsOverTheHosts) {
  add_manual("guide");
  set("QEL_OLH_DISPLAY_TYPE", "Topic");
  EXPECT_EQ(OlhHelpCall("guide", "Intro", OLH_DISPLAY_POPUP), OLH_RESULT_OK);
  EXPECT_EQ(shown_urls(), "file://@/docs/htmldocs/guide/index.htm#context=&topic=Intro&single=true\n");
}

TEST_F(HelpScene, ATestShowsNothingAndTellsDocumentFromTopic) {
  add_manual("guide");
  add_pdf("paper");
  const std::string longer_than_a_buffer(5000, 't');
  const std::tuple<const char*, const char*, int> table[] = {
      {"guide", "Intro", 0},
      {"guide", "in tro", 0},
      {"guide", "", 0},
      {"guide", "Other", 6},
      {"guide", longer_than_a_buffer.c_str(), 6},
      {"absent", "Intro", 4},
      {"", "Intro", 3},
      {nullptr, nullptr, 3},
      {"paper", "Other", 0},
      {"paper", "", 0},
  };
  for (const auto& [document, tag, result] : table)
    EXPECT_EQ(OlhHelpTest(document, tag), result) << (document ? document : "null");
  EXPECT_EQ(OlhGetCurrentViewer(), OLH_VIEWER_PDF) << "a test changes the current viewer as a call would";
  EXPECT_EQ(browser.invocations().size() + reader.invocations().size(), 0U);
}

TEST_F(HelpScene, TheScopeChoosesThePageThatSearches) {
  add_main_portal();
  add_portal("gear_td");
  add_manual("guide");
  EXPECT_EQ(OlhSearch("a&b", nullptr), OLH_RESULT_OK);
  EXPECT_EQ(OlhSearch("wheel", "guide"), OLH_RESULT_OK);
  EXPECT_EQ(OlhSearch("wheel", "gear_td"), OLH_RESULT_OK);
  const std::string support = olh_test::support_page("tomedeck.cfm?query=wheel&field=olh");
  EXPECT_EQ(OlhSearch("wheel", "orvane"), support.empty() ? OLH_RESULT_NOT_FOUND : OLH_RESULT_OK);
  EXPECT_EQ(shown_urls(),
            "file://@/docs/index.html#query=a%20b&tab=search\n"
            "file://@/docs/htmldocs/qelhelp.htm#context=guide&query=wheel&tab=2&src=doc\n"
            "file://@/docs/index.html#tomedeck=gear_td&query=wheel&tab=search\n" +
                support);
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

// Each of these reached a shell or an argument vector once; none of them may be more than text there.
TEST_F(HelpScene, NoNameOrTagRunsACommand) {
  const std::string canary = dir + "/canary";
  const std::string command = "$(touch " + canary + ")`touch " + canary + "`';touch " + canary + ";'\"";
  add_manual("guide");
  write("docs/htmldocs/x$(touch canary)'y/index.htm", "odd");
  OlhHelpCall("guide", command.c_str(), 0);
  OlhHelpCall(("http://h/" + command).c_str(), "x", 0);
  EXPECT_EQ(OlhHelpCall("x$(touch canary)'y", "x", 0), OLH_RESULT_OK);
  OlhTomeDeck(command.c_str(), command.c_str());
  OlhSearch(command.c_str(), nullptr);
  OlhSearch(command.c_str(), "orvane");
  EXPECT_FALSE(std::filesystem::exists(canary));
  EXPECT_FALSE(std::filesystem::exists("canary"));
  EXPECT_NE(shown_urls().find("/x$%28touch%20canary%29%27y/index.htm#context="), std::string::npos) << shown_urls();
}

}  // namespace
