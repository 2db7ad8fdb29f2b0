#include <csignal>
#include <future>
#include <string>
#include <tuple>

#include "acrobat_dde.h"
#include "olh/support.h"
#include "scratch.h"

namespace {

using namespace olh_test;
using ReaderStart = Scratch;

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
  std::vector<Recorder> readers;
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
    EXPECT_EQ(readers[i].arguments(), std::vector<Words>{cases[i].arguments});
  }
}

TEST_F(ReaderStart, WhatNoReaderMayGetIsRefused) {
  add_viewer("acroread");
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGCHLD);
  sigprocmask(SIG_BLOCK, &signals, nullptr);
  const std::tuple<std::string, std::string, std::string> cases[] = {
      {"-x", "", ""},
      {"/d/a.pdf", std::string(OLH_BUFFER_SIZE - std::string("nameddest=").size(), 'x'), ""},
      {std::string(OLH_BUFFER_SIZE, 'x'), "", ""},
      {"/d/a.pdf", "", std::string(OLH_BUFFER_SIZE, 'x')},
  };
  for (const auto& [doc, newlink, program] : cases) {
    EXPECT_EQ(OlhAcroViewerStart(nullptr, doc.c_str(), newlink.c_str(), program.c_str()), OLH_RESULT_FAILED);
    EXPECT_EQ(OlhAcroDocOpen(doc.c_str(), newlink.c_str(), program.c_str()), OLH_RESULT_IO);
  }
  sigpending(&signals);
  EXPECT_EQ(sigismember(&signals, SIGCHLD), 0) << "no process was started";
}

TEST_F(ReaderStart, MissingReader) {
  OlhAcroSetPath("/no/such/reader");
  EXPECT_EQ(olhAcroDDE->startViewer(nullptr, "/d/a.pdf", nullptr, nullptr), OLH_RESULT_NO_PROGRAM);
}

}  // namespace
