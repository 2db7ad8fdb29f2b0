#include "help_scene.h"

namespace {

using olh_test::HelpScene;

TEST_F(HelpScene, OpensThePortalThatIsAskedFor) {
  add_main_portal();
  add_portal("gear_td");
  EXPECT_EQ(OlhTomeDeck("gear_td", nullptr), OLH_RESULT_OK);
  EXPECT_EQ(OlhTomeDeck(nullptr, "libraries"), OLH_RESULT_OK);
  EXPECT_EQ(shown_urls(),
            file_url("tomedecks/index.html?tomedeck=gear_td\n") + file_url("tomedecks/index.html?tab=libraries\n"));
}

TEST_F(HelpScene, TheMainPortalStandsInForAMissingOne) {
  add_main_portal();
  EXPECT_EQ(OlhTomeDeck("absent_td", "search"), OLH_RESULT_NOT_FOUND);
  EXPECT_EQ(shown_urls(), file_url("tomedecks/index.html?tab=search\n"));
  EXPECT_EQ(OlhGetCurrentViewer(), OLH_VIEWER_TOMEDECK);
}

TEST_F(HelpScene, TheNotFoundPdfStandsInForTheMainPortal) {
  add_pdf("qeldoc_notfound");
  EXPECT_EQ(OlhTomeDeck("absent_td", "search"), OLH_RESULT_NOT_FOUND);
  EXPECT_EQ(read_documents(), root + "/pdfdocs/qeldoc_notfound.pdf \n");
  EXPECT_EQ(shown_urls(), "");
}

TEST_F(HelpScene, WithoutAnyRootTheSupportPortalIsShown) {
  unset("QEL_DOC_PATH");
  EXPECT_EQ(OlhTomeDeck("absent_td", "search"), OLH_RESULT_NOT_FOUND);
  EXPECT_EQ(shown_urls(), OLH_SUPPORT_PORTAL_URL "tomedeck.cfm?link=doc_not_found\n");
}

}  // namespace
