#include "help_scene.h"

namespace {

using olh_test::HelpScene;

TEST_F(HelpScene, TheBookcaseIsAPdfWhateverTheViewerOrder) {
  add_pdf("_bk_qel");
  add_manual("_bk_qel");
  EXPECT_EQ(OlhBookcase(nullptr, "Tools"), OLH_RESULT_OK);
  EXPECT_EQ(read_documents(), "-openInNewWindow /a nameddest=M8.newlink.Tools " + root + "/pdfdocs/_bk_qel.pdf \n");
  EXPECT_EQ(OlhGetCurrentViewer(), OLH_VIEWER_PDF);
}

TEST_F(HelpScene, AMissingBookcaseGivesTheNotFoundPdf) {
  add_pdf("qeldoc_notfound");
  EXPECT_EQ(OlhBookcase("absent", nullptr), OLH_RESULT_NOT_FOUND);
  EXPECT_EQ(read_documents(), root + "/pdfdocs/qeldoc_notfound.pdf \n");
}

TEST_F(HelpScene, WithoutAnyRootTheBookcaseIsTheSupportPortal) {
  unset("QEL_DOC_PATH");
  EXPECT_EQ(OlhBookcase("", ""), OLH_RESULT_NOT_FOUND);
  EXPECT_EQ(shown_urls(), OLH_SUPPORT_PORTAL_URL "tomedeck.cfm?link=doc_not_found\n");
}

}  // namespace
