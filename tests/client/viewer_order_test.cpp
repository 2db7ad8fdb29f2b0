#include "viewer_order.h"

#include <array>

#include "help_scene.h"

namespace {

using olh_test::HelpScene;
using olh_test::Words;
using Order = std::array<int, 2>;

Order order() { return {viewerOrder[0], viewerOrder[1]}; }
const Order kHtmlFirst = {OLH_VIEWER_HTML, OLH_VIEWER_PDF};
const Order kPdfFirst = {OLH_VIEWER_PDF, OLH_VIEWER_HTML};

class ViewerOrder : public olh_test::Scratch {};

TEST_F(ViewerOrder, TakesOneNameOrAList) {
  const std::tuple<const char*, int, Order> table[] = {
      {"PDF", 0, kPdfFirst},   {"Html", 0, kHtmlFirst},   {"pdf:html", 0, kPdfFirst},     {"html:pdf", 0, kHtmlFirst},
      {":pdf:", 0, kPdfFirst}, {"pdf:pdf", 0, kPdfFirst}, {"pdf:pdf:html", 0, kPdfFirst}, {"xyz:htm", 0, kHtmlFirst},
      {"htm:", 0, kHtmlFirst}, {"htm", 3, kPdfFirst},     {"xyz", 3, kPdfFirst},          {":", 3, kPdfFirst},
      {" pdf", 3, kPdfFirst},  {"", 3, kPdfFirst},        {nullptr, 3, kPdfFirst}};
  for (const auto& [text, result, expected] : table) {
    SCOPED_TRACE(text ? text : "null");
    OlhSetViewer(OLH_VIEWER_HTML, 0);
    OlhSetViewer(OLH_VIEWER_PDF, 0);
    EXPECT_EQ(OlhSetViewerOrder(text), result);
    EXPECT_EQ(order(), expected);
    EXPECT_EQ(OlhGetCurrentViewer(), viewerOrder[0]);
  }
  EXPECT_EQ(OlhSetViewerOrder(std::string(5000, 'p').c_str()), OLH_RESULT_INVALID);
}

TEST_F(ViewerOrder, AnUnrecognisedOrderStillMakesTheFrontViewerCurrent) {
  current_viewer = OLH_VIEWER_TOMEDECK;
  EXPECT_EQ(OlhSetViewerOrder("xyz"), OLH_RESULT_INVALID);
  EXPECT_EQ(OlhGetCurrentViewer(), OLH_VIEWER_HTML);
  current_viewer = OLH_VIEWER_TOMEDECK;
  EXPECT_EQ(OlhSetViewerOrder(""), OLH_RESULT_INVALID);
  EXPECT_EQ(OlhGetCurrentViewer(), OLH_VIEWER_TOMEDECK);
}

TEST_F(ViewerOrder, AnyViewerMovesToTheFront) {
  EXPECT_EQ(OlhSetViewer(OLH_VIEWER_PDF, 0), OLH_RESULT_OK);
  EXPECT_EQ(order(), kPdfFirst);
  EXPECT_EQ(OlhSetViewer(7, 1), OLH_RESULT_OK);
  EXPECT_EQ(order(), (Order{7, OLH_VIEWER_HTML}));
  EXPECT_EQ(OlhGetCurrentViewer(), 7);
  EXPECT_EQ(OlhSetViewer(OLH_VIEWER_HTML, 0), OLH_RESULT_OK);
  EXPECT_EQ(order(), (Order{OLH_VIEWER_HTML, 7}));
}

TEST_F(ViewerOrder, TheDefaultComesFromTheEnvironment) {
  const std::pair<const char*, Order> table[] = {
      {"pdf", kPdfFirst}, {"bogus", kHtmlFirst}, {"", kHtmlFirst}, {"html", kHtmlFirst}};
  for (const char* former : {"html:pdf", "pdf:html"}) {
    for (const auto& [value, expected] : table) {
      OlhSetViewerOrder(former);
      set("QEL_DOC_TYPE", value);
      EXPECT_EQ(OlhSetViewer(OLH_VIEWER_DEFAULT, 0), OLH_RESULT_OK);
      EXPECT_EQ(order(), expected) << value << " behind " << former;
      EXPECT_EQ(OlhGetCurrentViewer(), expected[0]) << value << " behind " << former;
    }
  }
}

TEST_F(HelpScene, ABrowserIsStartedUnlessItRunsAndAReaderAlwaysIs) {
  OlhSetViewer(OLH_VIEWER_HTML, 1);
  EXPECT_EQ(browser.invocations().size(), 1U) << "only asked whether it runs";
  EXPECT_EQ(OlhIsViewerRunning(OLH_VIEWER_HTML), OLH_RESULT_OK);
  EXPECT_EQ(OlhIsViewerRunning(OLH_VIEWER_PDF), OLH_RESULT_FAILED);
  EXPECT_EQ(OlhIsViewerRunning(OLH_VIEWER_TOMEDECK), OLH_RESULT_FAILED);
  OlhSetViewer(OLH_VIEWER_PDF, 1);
  EXPECT_EQ(read_documents(), "\n") << "started once, with no document";
  browser.on_ping(0, "No running window\n");
  OlhSetViewer(OLH_VIEWER_HTML, 1);
  EXPECT_EQ(browser.arguments().back(), Words{""}) << "one that does not run is started, with no page";
}

}  // namespace
