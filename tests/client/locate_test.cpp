#include "locate.h"

#include "help_scene.h"

namespace {

using olh_test::HelpScene;

struct Located {
  int kind;
  std::string location;
};

Located located(const std::string& name) {
  Place place;
  const int kind = OlhLocateDoc(place.location, name.c_str(), place.viewerPath);
  return {kind, place.location};
}

class LocateDoc : public HelpScene {
 protected:
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
  EXPECT_EQ(located("both").kind, OLH_VIEWER_HTML);
  EXPECT_EQ(located("both").location, file_url("htmldocs/both/index.htm"));
  EXPECT_EQ(located("only").kind, OLH_VIEWER_PDF) << "the HTML lookup gives the PDF form too";
  EXPECT_EQ(located("LOUD.PDF").kind, OLH_VIEWER_HTML) << "only a location in lower case counts as PDF";
  OlhSetViewerOrder("pdf:html");
  EXPECT_EQ(located("both").kind, OLH_VIEWER_PDF);
  EXPECT_EQ(located("both").location, root + "/pdfdocs/both.pdf");
  OlhSetViewer(42, 0);
  EXPECT_EQ(located("both").kind, OLH_VIEWER_HTML) << "an odd value takes the front place and is passed over";
}

TEST_F(LocateDoc, ANameEndingInTdIsAPortalFirst) {
  EXPECT_EQ(located("gear_td").kind, OLH_VIEWER_TOMEDECK);
  EXPECT_EQ(located("gear_td").location, file_url("tomedecks/index.html?tomedeck=gear_td"));
  EXPECT_EQ(located("page_td").kind, OLH_VIEWER_HTML);
  EXPECT_EQ(located("td").kind, OLH_VIEWER_HTML);
}

TEST_F(LocateDoc, APathIsAPdfByItsEndAndAUrlNever) {
  const std::string loud = root + "/pdfdocs/LOUD.PDF";
  EXPECT_EQ(located(loud).kind, OLH_VIEWER_PDF);
  EXPECT_EQ(located(loud).location, loud);
  EXPECT_EQ(located("http://h/x.pdf").kind, OLH_VIEWER_HTML);
  EXPECT_EQ(located("http://h/x.pdf").location, "http://h/x.pdf");
  EXPECT_EQ(located(root + "/htmldocs/both").location, file_url("htmldocs/both/index.htm"));
}

TEST_F(LocateDoc, WhatIsNowhereEmptiesTheLocation) {
  for (const std::string& name : {std::string("absent"), std::string("absent_td"), std::string("/no/such.pdf"),
                                  std::string("/no/such"), std::string(), std::string(4096, 'n')}) {
    const Located nowhere = located(name);
    EXPECT_EQ(nowhere.kind, kNotLocated) << name;
    EXPECT_EQ(nowhere.location, "") << name;
  }
  Place place;
  EXPECT_EQ(OlhLocateDoc(nullptr, "both", place.viewerPath), kNotLocated);
  EXPECT_EQ(OlhLocateDoc(place.location, nullptr, place.viewerPath), kNotLocated);
}

}  // namespace
