#include "viewer_choice.h"

#include <gtest/gtest.h>

#include <string>

#include "scratch.h"

namespace {

using olh::ChoiceSource;

class ViewerChoice : public olh_test::Scratch {
 protected:
  void write_options(const std::string& text) const { write("home/.qel_viewer_config.ini", text); }
};

void expect_choice(OlhViewer viewer, ChoiceSource source, const std::string& program) {
  const olh::UserChoice choice = olh::user_choice(viewer);
  EXPECT_EQ(choice.source, source);
  EXPECT_EQ(choice.program, program);
}

TEST_F(ViewerChoice, OptionsFileBeatsVariable) {
  const std::string browser = make_program("a/browser");
  const std::string reader = make_program("a/reader");
  write_options("QEL_HTML_BROWSER=\"" + browser + "\"\nQEL_PDF_READER=\"" + reader + "\"\n");
  set("QEL_HTML_BROWSER", make_program("b/browser"));
  set("QEL_PDF_READER", make_program("b/reader"));
  expect_choice(OLH_VIEWER_HTML, ChoiceSource::kOptionsFile, browser);
  expect_choice(OLH_VIEWER_PDF, ChoiceSource::kOptionsFile, reader);
}

TEST_F(ViewerChoice, VariableCountsWhenTheOptionsFileNamesNoExecutable) {
  const std::string browser = make_program("b/browser");
  set("QEL_HTML_BROWSER", browser);
  expect_choice(OLH_VIEWER_HTML, ChoiceSource::kVariable, browser);
  write_options("QEL_HTML_BROWSER=\"/no/such/browser\"\nQEL_PDF_READER=\"" + browser + "\"\n");
  expect_choice(OLH_VIEWER_HTML, ChoiceSource::kVariable, browser);
}

TEST_F(ViewerChoice, OptionsFileIsNotReadWithoutAHomeDirectory) {
  const std::string browser = make_program("a/browser");
  write_options("QEL_HTML_BROWSER=\"" + browser + "\"\n");
  set("HOME", dir + "/elsewhere");
  expect_choice(OLH_VIEWER_HTML, ChoiceSource::kNone, "");
  unset("HOME");
  expect_choice(OLH_VIEWER_HTML, ChoiceSource::kNone, "");
}

TEST_F(ViewerChoice, ValuesOfTheVariable) {
  const std::string browser = make_program("bin/browser");
  write("bin/readable", "text");
  const struct {
    std::string value;
    std::string choice;
  } cases[] = {
      {browser, browser},
      {browser + "/", browser},
      {"\\" + browser.substr(1), browser},
      {"browser", "browser"},
      {"browser\\", "browser"},
      {"", ""},
      {"/", ""},
      {bin, ""},
      {bin + "/readable", ""},
      {"readable", ""},
      {"no-such-browser", ""},
      {std::string(5000, 'x'), ""},
  };
  for (const auto& test : cases) {
    set("QEL_HTML_BROWSER", test.value);
    SCOPED_TRACE(test.value);
    expect_choice(OLH_VIEWER_HTML, test.choice.empty() ? ChoiceSource::kNone : ChoiceSource::kVariable, test.choice);
  }
}

TEST_F(ViewerChoice, ProgramInUse) {
  const std::string longest(OLH_BUFFER_SIZE - 1, 'x');
  const std::string too_long(OLH_BUFFER_SIZE, 'x');
  const struct {
    std::string override_path;
    const char* viewer_path;
    std::string default_path;
    int result;
    std::string program;
  } cases[] = {
      {"o", "v", "d", OLH_RESULT_OK, "o"},
      {"", "v", "d", OLH_RESULT_OK, "v"},
      {"", "", "d", OLH_RESULT_OK, "d"},
      {"", nullptr, "d", OLH_RESULT_OK, "d"},
      {"", nullptr, "", OLH_RESULT_NO_PROGRAM, "untouched"},
      {longest, nullptr, "", OLH_RESULT_OK, longest},
      {too_long, "v", "d", OLH_RESULT_FAILED, ""},
  };
  for (const auto& test : cases) {
    const olh::ViewerPaths paths = olh::make_viewer_paths();
    if (!test.override_path.empty()) olh::replace_path(paths->overridePath, test.override_path.c_str());
    if (!test.default_path.empty()) olh::replace_path(paths->defaultPath, test.default_path.c_str());
    std::string buffer = "untouched";
    buffer.resize(OLH_BUFFER_SIZE);
    EXPECT_EQ(olh::copy_program_in_use(buffer.data(), paths.get(), test.viewer_path), test.result);
    EXPECT_STREQ(buffer.c_str(), test.program.c_str());
  }
}

TEST_F(ViewerChoice, PathIsReplacedByItself) {
  const olh::ViewerPaths paths = olh::make_viewer_paths();
  olh::replace_path(paths->overridePath, "/opt/firefox");
  olh::replace_path(paths->overridePath, paths->overridePath);
  EXPECT_STREQ(paths->overridePath, "/opt/firefox");
}

}  // namespace
