#include <gtest/gtest.h>

#include <future>
#include <string>
#include <vector>

#include "acrobat_dde.h"
#include "olh/support.h"
#include "scratch.h"

namespace {

using Words = std::vector<std::string>;

class ReaderStart : public olh_test::Scratch {
 protected:
  static void switch_debug_on() {
    set("OLH_DEBUG", "1");
    setDebugVariable();
  }
};

// A start takes two seconds: each case has a thread, a launcher and a reader of its own.
TEST_F(ReaderStart, CommandLines) {
  const struct {
    const char* doc;
    const char* newlink;
    Words arguments;
  } cases[] = {
      {nullptr, nullptr, {}},
      {"", "M8.newlink.A", {}},
      {"/d/a.pdf", nullptr, {"/d/a.pdf"}},
      {"/d/a b's $x.pdf", "", {"/d/a b's $x.pdf"}},
      {"/d/a.pdf", "M8.newlink.A.B", {"-openInNewWindow", "/a", "nameddest=M8.newlink.A.B", "/d/a.pdf"}},
      {"/d/a.pdf", "-x $(y)", {"-openInNewWindow", "/a", "nameddest=-x $(y)", "/d/a.pdf"}},
      {"/d/a\n\x7f.pdf", "A\tB", {"-openInNewWindow", "/a", "nameddest=A\tB", "/d/a\n\x7f.pdf"}},
  };
  std::vector<olh_test::Recorder> readers;
  std::vector<std::future<int>> results;
  // All of them first: a program that is still being written when another thread forks cannot be executed.
  for (std::size_t i = 0; i < std::size(cases); ++i) readers.push_back(add_viewer("reader" + std::to_string(i)));
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    results.push_back(std::async(std::launch::async, [&test = cases[i], path = readers[i].path] {
      OlhAcroDDE launcher;
      launcher.d_viewerPaths = olh::make_viewer_paths();
      return launcher.startViewer(nullptr, test.doc, test.newlink, path.c_str());
    }));
  }
  for (std::size_t i = 0; i < readers.size(); ++i) {
    EXPECT_EQ(results[i].get(), OLH_RESULT_OK);
    ASSERT_EQ(readers[i].invocations().size(), 1U);
    EXPECT_EQ(readers[i].invocations()[0].arguments, cases[i].arguments);
  }
}

TEST_F(ReaderStart, WhatNoReaderMayGetIsRefused) {
  const olh_test::Recorder reader = add_viewer("acroread");
  const struct {
    std::string doc;
    std::string newlink;
  } cases[] = {
      {"-x", ""},
      {"/d/a.pdf", std::string(OLH_BUFFER_SIZE - std::string("nameddest=").size(), 'x')},
      {std::string(OLH_BUFFER_SIZE, 'x'), ""},
  };
  for (const auto& test : cases) {
    EXPECT_EQ(OlhAcroViewerStart(nullptr, test.doc.c_str(), test.newlink.c_str(), nullptr), OLH_RESULT_FAILED);
    EXPECT_EQ(OlhAcroDocOpen(test.doc.c_str(), test.newlink.c_str(), nullptr), OLH_RESULT_IO);
  }
  EXPECT_TRUE(reader.invocations().empty());
}

TEST_F(ReaderStart, OverlongProgramIsRefused) {
  const std::string program(OLH_BUFFER_SIZE, 'x');
  EXPECT_EQ(OlhAcroSetPath(program.c_str()), OLH_RESULT_OK);
  OlhAcroIsViewerRunning();
  EXPECT_EQ(olhAcroDDE->startViewer(nullptr, nullptr, nullptr, nullptr), OLH_RESULT_FAILED);
  std::string buffer(OLH_BUFFER_SIZE, 'x');
  EXPECT_EQ(OlhAcroGetViewerPath(buffer.data(), nullptr), OLH_RESULT_FAILED);
  EXPECT_STREQ(buffer.c_str(), "");
}

TEST_F(ReaderStart, DebugLinesNameTheSource) {
  make_program("bin/acroread");
  OlhAcroIsViewerRunning();
  switch_debug_on();
  const auto refused_start = [](const char* viewer_path) {
    return olh_test::standard_error_of([&] { OlhAcroViewerStart(nullptr, "-x", nullptr, viewer_path); });
  };
  EXPECT_EQ(refused_start(""), "startViewer: using default pdf viewer: " + bin + "/acroread\nstartViewer: failed\n");
  EXPECT_EQ(refused_start("/tree/reader"),
            "startViewer: using pdf viewer from qel_doc_options.ini: /tree/reader\nstartViewer: failed\n");
  OlhAcroSetPath("/my/reader");
  EXPECT_EQ(refused_start("/tree/reader"),
            "startViewer: using pdf viewer override: /my/reader\nstartViewer: failed\n");
}

TEST_F(ReaderStart, DocumentIsOpened) {
  const olh_test::Recorder reader = add_viewer("acroread");
  set("QEL_PDF_READER", "acroread");
  OlhAcroIsViewerRunning();
  switch_debug_on();
  int result = -1;
  EXPECT_EQ(olh_test::standard_error_of([&] { result = OlhAcroDocOpen("/d/a.pdf", nullptr, nullptr); }),
            "OlhAcroDocOpen\n"
            "startViewer: using pdf viewer override: acroread\n"
            "startViewer: done\n"
            "OlhAcroDocOpen: done\n");
  EXPECT_EQ(result, OLH_RESULT_OK);
  EXPECT_EQ(reader.invocations().size(), 1U);
}

TEST_F(ReaderStart, MissingReader) {
  OlhAcroSetPath("/no/such/reader");
  EXPECT_EQ(olhAcroDDE->startViewer(nullptr, "/d/a.pdf", nullptr, nullptr), OLH_RESULT_NO_PROGRAM);
  switch_debug_on();
  int result = -1;
  EXPECT_EQ(olh_test::standard_error_of([&] { result = OlhAcroDocOpen("/d/a.pdf", nullptr, nullptr); }),
            "OlhAcroDocOpen\n"
            "startViewer: using pdf viewer override: /no/such/reader\n"
            "startViewer: failed\n"
            "OlhAcroDocOpen: failed\n");
  EXPECT_EQ(result, OLH_RESULT_IO);
}

}  // namespace
