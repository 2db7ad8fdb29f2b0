#include <olh/olh.hpp>

#include "help_scene.h"

namespace {

using std::string_literals::operator""s;

class Wrapper : public olh_test::HelpScene {
 protected:
  Wrapper() { add_manual("guide"); }
};

TEST_F(Wrapper, SaysWhatACallCameTo) {
  EXPECT_TRUE(olh::test("guide", "Intro"));
  EXPECT_EQ(olh::test("guide", "Outro").code(), OLH_RESULT_NO_TOPIC);
  EXPECT_STREQ(olh::test("guide", "Outro").message(), "The documentation has no such topic.");
  EXPECT_STREQ(olh::test("absent").message(), "The documentation was not found. Perhaps it is not installed.");
  EXPECT_STREQ(olh::test("").message(), "No document was named.");
}

TEST_F(Wrapper, RefusesTextThatHoldsANul) {
  const std::string cut_in_c = "guide\0/etc"s;
  for (const olh::Result refused :
       {olh::test(cut_in_c), olh::show(cut_in_c), olh::show("guide", "Intro\0"s), olh::portal(cut_in_c),
        olh::bookcase(cut_in_c), olh::search("words\0"s), olh::search("words", cut_in_c),
        olh::set_viewer_order("pdf\0"s), olh::set_doc_path(dir + '\0'), olh::set_alt_doc_path(dir + '\0'),
        olh::set_viewer_path(olh::Viewer::kHtml, cut_in_c), olh::set_tree_viewer_path(olh::Viewer::kHtml, cut_in_c),
        olh::make_lists(root + '\0')})
    EXPECT_EQ(refused.code(), OLH_RESULT_INVALID);
  EXPECT_EQ(browser.invocations().size(), 0U);
}

TEST_F(Wrapper, GivesATextOnlyWhenThereIsOne) {
  EXPECT_EQ(olh::doc_path().text(), root);
  const olh::Text none = olh::viewer_path(olh::Viewer::kPortal);
  EXPECT_FALSE(none);
  EXPECT_EQ(none.text(), "");
}

TEST_F(Wrapper, NamesTheListsOfItsOwnRunOnly) {
  std::vector<std::string> written = {"kept"};
  make_directory("docs/htmldocs/QEL/lib");
  make_directory("docs/tomedecks/qel_td/js");
  EXPECT_TRUE(olh::make_lists(root, &written));
  EXPECT_EQ(written.front(), "kept");
  EXPECT_GT(written.size(), 1U);
  for (std::size_t i = 1; i < written.size(); ++i) EXPECT_NE(olh_test::read_file(written[i]), "") << written[i];
  const std::size_t before = written.size();
  EXPECT_TRUE(olh::make_lists(root));
  EXPECT_EQ(written.size(), before);
}

}  // namespace
