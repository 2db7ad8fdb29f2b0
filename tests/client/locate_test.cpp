#include "locate.h"

#include "help_scene.h"

namespace {

using olh_test::HelpScene;

class LocateDoc : public HelpScene {
 protected:
  using Located = std::pair<int, std::string>;
  // The kind of a document, and its location, shortened.
  Located located(const std::string& name) const {
    Place place;
    const int kind = OlhLocateDoc(place.location, name.c_str(), place.viewerPath);
    return {kind, shortened(place.location)};
  }
  LocateDoc() {
    add_manual("both");
    add_pdf("both");
    add_pdf("only");
    write("docs/pdfdocs/LOUD.PDF", "%PDF");
    add_main_portal();
    add_portal("gear_td");
    add_manual("page_td");
    add_manual("td");
  }
};

TEST_F(LocateDoc, ABareNameFollowsTheViewerOrderAndTheLocationTellsTheKind) {
  const Located manual = {OLH_VIEWER_HTML, "file://@/docs/htmldocs/both/index.htm"};
  EXPECT_EQ(located("both"), manual);
  EXPECT_EQ(located("only"), Located(OLH_VIEWER_PDF, "@/docs/pdfdocs/only.pdf")) << "the HTML lookup gives it too";
  EXPECT_EQ(located("LOUD.PDF").first, OLH_VIEWER_HTML) << "only a location in lower case counts as PDF";
  OlhSetViewerOrder("pdf:html");
  EXPECT_EQ(located("both"), Located(OLH_VIEWER_PDF, "@/docs/pdfdocs/both.pdf"));
  OlhSetViewer(42, 0);
  EXPECT_EQ(located("both"), manual) << "an odd value takes the front place and is passed over";
}

TEST_F(LocateDoc, ANameEndingInTdIsAPortalFirst) {
  EXPECT_EQ(located("gear_td"), Located(OLH_VIEWER_TOMEDECK, "file://@/docs/tomedecks/index.html?tomedeck=gear_td"));
  EXPECT_EQ(located("page_td").first, OLH_VIEWER_HTML);
  EXPECT_EQ(located("td").first, OLH_VIEWER_HTML);
}

TEST_F(LocateDoc, APathIsAPdfByItsEndAndAUrlNever) {
  EXPECT_EQ(located(root + "/pdfdocs/LOUD.PDF"), Located(OLH_VIEWER_PDF, "@/docs/pdfdocs/LOUD.PDF"));
  EXPECT_EQ(located("http://h/x.pdf"), Located(OLH_VIEWER_HTML, "http://h/x.pdf"));
  EXPECT_EQ(located(root + "/htmldocs/both"), Located(OLH_VIEWER_HTML, "file://@/docs/htmldocs/both/index.htm"));
}

TEST_F(LocateDoc, WhatIsNowhereEmptiesTheLocation) {
  for (const std::string& name :
       olh_test::Words{"absent", "absent_td", "/no/such.pdf", "/no/such", "", std::string(4096, 'n')})
    EXPECT_EQ(located(name), Located(kNotLocated, "")) << name;
  Place place;
  EXPECT_EQ(OlhLocateDoc(nullptr, "both", place.viewerPath), kNotLocated);
  EXPECT_EQ(OlhLocateDoc(place.location, nullptr, place.viewerPath), kNotLocated);
}

}  // namespace
