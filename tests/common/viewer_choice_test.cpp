#include "viewer_choice.h"

#include <gtest/gtest.h>

#include <string>

#include "olh/support.h"
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
  write_options("QEL_HTML_BROWSER=\"" + make_program("a/browser") + "\"\n");
  set("HOME", dir + "/elsewhere");
  expect_choice(OLH_VIEWER_HTML, ChoiceSource::kNone, "");
  unset("HOME");
  expect_choice(OLH_VIEWER_HTML, ChoiceSource::kNone, "");
}

TEST_F(ViewerChoice, ValuesOfTheVariable) {
  const std::string browser = make_program("bin/browser");
  write("bin/readable", "text");
  const std::pair<std::string, std::string> cases[] = {
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
  for (const auto& [value, choice] : cases) {
    set("QEL_HTML_BROWSER", value);
    SCOPED_TRACE(value);
    expect_choice(OLH_VIEWER_HTML, choice.empty() ? ChoiceSource::kNone : ChoiceSource::kVariable, choice);
  }
}

TEST_F(ViewerChoice, PathIsReplacedByItself) {
  const olh::ViewerPaths paths = olh::make_viewer_paths();
  olh::replace_path(paths->overridePath, "/opt/firefox");
  olh::replace_path(paths->overridePath, paths->overridePath);
  EXPECT_STREQ(paths->overridePath, "/opt/firefox");
}

// One of the two launchers, as the other rooms reach it.
struct Launcher {
  const char* program;
  const char* option;
  int (*get)(char*, const char*) noexcept;
  int (*set)(const char*) noexcept;
};

class ProgramInUse : public ViewerChoice, public ::testing::WithParamInterface<Launcher> {
 protected:
  // The answer, and what it leaves in a buffer that was not empty.
  static std::string in_use(const char* prescribed = nullptr) {
    char path[OLH_BUFFER_SIZE] = "untouched";
    const int result = GetParam().get(path, prescribed);
    return result == OLH_RESULT_OK ? path : std::to_string(result) + path;
  }
};

TEST_P(ProgramInUse, IsTheUsersElseThePrescribedElseTheOneFound) {
  const std::string found = make_program(std::string("bin/") + GetParam().program);
  const std::string longest(OLH_BUFFER_SIZE - 1, 'x');
  for (const char* nothing : {"", static_cast<const char*>(nullptr)}) {
    EXPECT_EQ(in_use(nothing), found);
    EXPECT_EQ(GetParam().set(nothing), OLH_RESULT_OK);
  }
  EXPECT_EQ(in_use("/tree/viewer"), "/tree/viewer");
  EXPECT_EQ(GetParam().set("/no/such/viewer"), OLH_RESULT_OK);
  EXPECT_EQ(in_use("/tree/viewer"), "/no/such/viewer");
  GetParam().set(longest.c_str());
  EXPECT_EQ(in_use(), longest);
  GetParam().set((longest + "x").c_str());
  EXPECT_EQ(in_use("/tree/viewer"), "2");
}

TEST_P(ProgramInUse, IsChosenOnceAtTheFirstCall) {
  make_program(std::string("bin/") + GetParam().program);
  const std::string chosen = make_program("a/chosen");
  set(GetParam().option, chosen);
  EXPECT_EQ(in_use("/tree/viewer"), chosen);
  set(GetParam().option, make_program("b/other"));
  EXPECT_EQ(in_use(), chosen);
}

INSTANTIATE_TEST_SUITE_P(
    OfBoth, ProgramInUse,
    ::testing::Values(Launcher{"firefox", "QEL_HTML_BROWSER", OlhBrowserGetPath, OlhBrowserSetPath},
                      Launcher{"acroread", "QEL_PDF_READER", OlhAcroGetViewerPath, OlhAcroSetPath}),
    [](const auto& launcher) { return std::string(launcher.param.program); });

}  // namespace
