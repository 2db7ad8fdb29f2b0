#include <filesystem>

#include "help_scene.h"
#include "viewer_order.h"

namespace {

using olh_test::HelpScene;
using olh_test::read_file;

constexpr char kSupportPage[] = OLH_SUPPORT_PORTAL_URL "tomedeck.cfm?link=doc_not_found\n";

TEST_F(HelpScene, ShowsAnHtmlTopicInTheRunningBrowser) {
  add_manual("guide");
  EXPECT_EQ(OlhHelpCall("guide", "Getting Started", OLH_DISPLAY_POPUP), OLH_RESULT_OK);
  EXPECT_EQ(shown_urls(), file_url("htmldocs/guide/index.htm") + "#context=&topic=GettingStarted&single=popup\n");
  EXPECT_EQ(OlhGetCurrentViewer(), OLH_VIEWER_HTML);
}

TEST_F(HelpScene, ShowsAPdfAtItsDestination) {
  add_pdf("guide");
  EXPECT_EQ(OlhHelpCall("guide", "Getting Started!", OLH_DISPLAY_NORMAL), OLH_RESULT_OK);
  EXPECT_EQ(read_documents(),
            "-openInNewWindow /a nameddest=M8.newlink.Getting.Started " + root + "/pdfdocs/guide.pdf \n");
  EXPECT_EQ(OlhGetCurrentViewer(), OLH_VIEWER_PDF);
}

TEST_F(HelpScene, ShowsAPortalAtItsTab) {
  add_main_portal();
  add_portal("gear_td");
  EXPECT_EQ(OlhHelpCall("gear_td", "search", OLH_DISPLAY_NORMAL), OLH_RESULT_OK);
  EXPECT_EQ(shown_urls(), file_url("tomedecks/index.html?tomedeck=gear_td&tab=search\n"));
  EXPECT_EQ(OlhGetCurrentViewer(), OLH_VIEWER_TOMEDECK);
}

TEST_F(HelpScene, AsksForADocumentName) {
  EXPECT_EQ(OlhHelpCall(nullptr, "x", 0), OLH_RESULT_INVALID);
  EXPECT_EQ(OlhHelpCall("", "x", 0), OLH_RESULT_INVALID);
  EXPECT_EQ(browser.invocations().size(), 0U);
}

TEST_F(HelpScene, GeneralHelpStandsInForAMissingDocument) {
  add_manual("qel_html_help");
  add_pdf("qeldoc_notfound");
  EXPECT_EQ(OlhHelpCall("absent", "x", OLH_DISPLAY_TOPIC), OLH_RESULT_NOT_FOUND);
  EXPECT_EQ(shown_urls(),
            file_url("htmldocs/qel_html_help/index.htm") + "#context=&topic=qel_help_014&single=true\n");
}

TEST_F(HelpScene, TheNotFoundPdfStandsInForTheGeneralHelp) {
  add_pdf("qeldoc_notfound");
  EXPECT_EQ(OlhHelpCall("absent", "x", 0), OLH_RESULT_NOT_FOUND);
  EXPECT_EQ(read_documents(), root + "/pdfdocs/qeldoc_notfound.pdf \n");
  EXPECT_EQ(shown_urls(), "");
}

TEST_F(HelpScene, TheSupportPortalStandsInForAReaderThatFails) {
  add_pdf("qeldoc_notfound");
  forget_reader();
  set("PATH", dir);
  if (OlhAcroDocOpen(nullptr, nullptr, nullptr) == 0) GTEST_SKIP() << "this machine has a reader of that name";
  EXPECT_EQ(OlhHelpCall("absent", "x", 0), OLH_RESULT_NOT_FOUND);
  EXPECT_EQ(shown_urls(), kSupportPage);
  EXPECT_EQ(OlhGetCurrentViewer(), OLH_VIEWER_HTML);
}

TEST_F(HelpScene, TheSupportPortalIsTheLastResort) {
  unset("QEL_DOC_PATH");
  EXPECT_EQ(OlhHelpCall("absent", "x", 0), OLH_RESULT_NOT_FOUND);
  EXPECT_EQ(shown_urls(), kSupportPage);
}

TEST_F(HelpScene, WithoutABrowserTheBookcaseIsShownAndPdfLeadsFromThenOn) {
  add_manual("guide");
  add_pdf("_bk_qel");
  forget_browser();
  EXPECT_EQ(OlhHelpCall("guide", "Intro", 0), OLH_RESULT_NO_PROGRAM);
  EXPECT_EQ(read_documents(), "\n" + root + "/pdfdocs/_bk_qel.pdf \n") << "started empty, then with the bookcase";
  EXPECT_EQ(viewerOrder[0], OLH_VIEWER_PDF);
  EXPECT_EQ(OlhGetCurrentViewer(), OLH_VIEWER_PDF);
}

TEST_F(HelpScene, AReaderThatFailsGivesItsOwnResultAndNoSubstitute) {
  add_pdf("guide");
  reader.on_start(1);
  EXPECT_EQ(OlhHelpCall("guide", "", 0), OLH_RESULT_IO);
  EXPECT_EQ(shown_urls(), "");
}

TEST_F(HelpScene, GotoTagIsAHelpCallWithTheNormalDisplay) {
  add_manual("guide");
  const std::string log = dir + "/log";
  set("OLH_LOG_HELP", log);
  SetOlhDisplayType(OLH_DISPLAY_POPUP);
  EXPECT_EQ(OlhDocGotoTag("guide", "Intro"), OLH_RESULT_OK);
  EXPECT_EQ(shown_urls(), file_url("htmldocs/guide/index.htm") + "#context=&topic=Intro\n");
  EXPECT_EQ(read_file(log),
            "OlhDocGotoTag( \"guide\", \"Intro\" );\n"
            "OlhHelpCall( \"guide\", \"Intro\", \"OLH_DISPLAY_NORMAL\" );\n"
            "OlhHelpCall returned 0\n"
            "OlhDocGotoTag returned 0\n");
}

TEST_F(HelpScene, AFixedDisplayTypeWinsOverTheHosts) {
  add_manual("guide");
  set("QEL_OLH_DISPLAY_TYPE", "Topic");
  EXPECT_EQ(OlhHelpCall("guide", "Intro", OLH_DISPLAY_POPUP), OLH_RESULT_OK);
  EXPECT_EQ(shown_urls(), file_url("htmldocs/guide/index.htm") + "#context=&topic=Intro&single=true\n");
}

TEST_F(HelpScene, ATestShowsNothingAndTellsDocumentFromTopic) {
  add_manual("guide");
  add_pdf("paper");
  struct Row {
    const char* document;
    const char* tag;
    int result;
  };
  const Row table[] = {{"guide", "Intro", 0}, {"guide", "in tro", 0}, {"guide", "", 0}, {"guide", "Other", 6},
                       {"paper", "Other", 0}, {"absent", "Intro", 4}, {"", "Intro", 3}, {nullptr, nullptr, 3}};
  for (const Row& row : table)
    EXPECT_EQ(OlhHelpTest(row.document, row.tag), row.result) << (row.document ? row.document : "null");
  EXPECT_EQ(OlhHelpTest("guide", std::string(5000, 't').c_str()), OLH_RESULT_NO_TOPIC);
  EXPECT_EQ(OlhHelpTest("paper", ""), OLH_RESULT_OK);
  EXPECT_EQ(OlhGetCurrentViewer(), OLH_VIEWER_PDF) << "a test changes the current viewer as a call would";
  EXPECT_EQ(browser.invocations().size() + reader.invocations().size(), 0U);
}

// Each of these reached a shell or an argument vector once; none of them may be more than text there.
TEST_F(HelpScene, NoNameOrTagRunsACommand) {
  const std::string canary = dir + "/canary";
  const std::string command = "$(touch " + canary + ")`touch " + canary + "`';touch " + canary + ";'\"";
  add_manual("guide");
  std::filesystem::create_directories(root + "/htmldocs/x" + "$(touch canary)'y");
  write("docs/htmldocs/x$(touch canary)'y/index.htm", "odd");
  set("QEL_DOC_PATH", root);
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
