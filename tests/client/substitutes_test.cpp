// What is shown in the place of what is missing.
#include "help_scene.h"
#include "http_server.h"
#include "viewer_order.h"

namespace {

using olh_test::HelpScene;

const std::string kSupportPage = olh_test::support_page("tomedeck.cfm?link=doc_not_found");
constexpr char kGeneralHelp[] = "htmldocs/qel_html_help/index.htm";
constexpr char kNotFound[] = "pdfdocs/qeldoc_notfound.pdf";
constexpr char kMainPortal[] = "tomedecks/index.html";

struct Missing {
  const char* name;
  int (*call)();
  std::vector<std::string> there;  // below the root; nothing: without any root
  std::string shown;
};

int help() { return OlhHelpCall("absent", "x", OLH_DISPLAY_TOPIC); }
int portal() { return OlhTomeDeck("absent_td", "search"); }
int bookcase() { return OlhBookcase("absent", nullptr); }

class Substitutes : public HelpScene, public ::testing::WithParamInterface<Missing> {};

TEST_P(Substitutes, AreShown) {
  for (const std::string& file : GetParam().there) write("docs/" + file, "");
  if (GetParam().there.empty()) unset("QEL_DOC_PATH");
  EXPECT_EQ(GetParam().call(), OLH_RESULT_NOT_FOUND);
  EXPECT_EQ(shown_urls() + read_documents(), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(
    Of, Substitutes,
    ::testing::Values(
        Missing{"document_with_general_help",
                help,
                {kGeneralHelp, kNotFound},
                "file://@/docs/htmldocs/qel_html_help/index.htm#context=&topic=qel_help_014&single=true\n"},
        Missing{"document", help, {kNotFound}, "@/docs/pdfdocs/qeldoc_notfound.pdf \n"},
        Missing{"document_without_root", help, {}, kSupportPage},
        Missing{"portal_with_main_portal",
                portal,
                {kMainPortal, kNotFound},
                "file://@/docs/tomedecks/index.html?tab=search\n"},
        Missing{"portal", portal, {kNotFound}, "@/docs/pdfdocs/qeldoc_notfound.pdf \n"},
        Missing{"portal_without_root", portal, {}, kSupportPage},
        Missing{"bookcase", bookcase, {kNotFound}, "@/docs/pdfdocs/qeldoc_notfound.pdf \n"},
        Missing{"bookcase_without_root", bookcase, {}, kSupportPage}),
    [](const auto& missing) { return std::string(missing.param.name); });

TEST_F(HelpScene, TheSupportPortalStandsInForAReaderThatFails) {
  add_pdf("qeldoc_notfound");
  forget_reader();
  set("PATH", dir);
  if (OlhAcroDocOpen(nullptr, nullptr, nullptr) == 0) GTEST_SKIP() << "this machine has a reader of that name";
  EXPECT_EQ(help(), OLH_RESULT_NOT_FOUND);
  EXPECT_EQ(shown_urls(), kSupportPage);
  EXPECT_EQ(OlhGetCurrentViewer(), OLH_VIEWER_HTML) << "also in a build without a portal";
}

TEST_F(HelpScene, WithoutABrowserTheBookcaseIsShownAndPdfLeadsFromThenOn) {
  add_manual("guide");
  add_pdf("_bk_qel");
  forget_browser();
  EXPECT_EQ(OlhHelpCall("guide", "Intro", 0), OLH_RESULT_NO_PROGRAM);
  EXPECT_EQ(read_documents(), "\n@/docs/pdfdocs/_bk_qel.pdf \n") << "started empty, then with the bookcase";
  EXPECT_EQ(viewerOrder[0], OLH_VIEWER_PDF);
  EXPECT_EQ(OlhGetCurrentViewer(), OLH_VIEWER_PDF);
}

TEST_F(HelpScene, WithoutABrowserAPdfBehindAUrlGivesWayToThePortal) {
  const olh_test::HttpServer server({"/d/htmldocs/qelhelp.htm", "/d/pdfdocs/guide.pdf"});
  set("QEL_DOC_PATH", server.url("/d"));
  set("OLH_LOG_HELP", dir + "/log");
  forget_browser();
  EXPECT_EQ(OlhHelpCall("guide", "", 0), OLH_RESULT_NO_PROGRAM);
  EXPECT_NE(olh_test::read_file(dir + "/log").find("OlhTomeDeck();\n"), std::string::npos);
  EXPECT_EQ(read_documents(), "");
}

TEST_F(HelpScene, AReaderThatFailsGivesItsOwnResultAndNoSubstitute) {
  add_pdf("guide");
  reader.on_start(1);
  EXPECT_EQ(OlhHelpCall("guide", "", 0), OLH_RESULT_IO);
  EXPECT_EQ(shown_urls(), "");
}

}  // namespace
