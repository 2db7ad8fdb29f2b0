#include "trace_log.h"

#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <string>

#include "names.h"
#include "olh/support.h"
#include "scratch.h"

namespace {

using namespace olh_test;
using TraceLog = Scratch;

TEST_F(TraceLog, CallLinesStopAtTheFirstMissingArgument) {
  std::string log = dir + "/log";
  StartOlhLog(log.data());
  OlhLogHelp("X", "a", "b", "c");
  OlhLogHelp("X", "a", "b", "");
  OlhLogHelp("X", "a", "", "c");
  OlhLogHelp("X", "", "b", "c");
  OlhLogHelp("X", nullptr, nullptr, nullptr);
  OlhLogHelp("X", "say \"hi\"", nullptr, nullptr);
  OlhLogHelp("", "a", "b", "c");
  OlhLogReturn("X", -1);
  OlhLogReturn("", 3);
  CloseOlhLog();
  OlhLogReturn("X", 0);
  EXPECT_EQ(read_file(log),
            "X( \"a\", \"b\", \"c\" );\n"
            "X( \"a\", \"b\" );\n"
            "X( \"a\" );\n"
            "X();\n"
            "X();\n"
            "X( \"say \"hi\"\" );\n"
            "X returned -1\n");
}

TEST_F(TraceLog, IsAppendedToAndNeedsADirectory) {
  std::string log = write("logs/trace", "earlier\n");
  std::string lost = dir + "/absent/trace";
  StartOlhLog(log.data());
  OlhLogReturn("X", 0);
  StartOlhLog(lost.data());
  OlhLogReturn("Y", 0);
  EXPECT_EQ(read_file(log), "earlier\nX returned 0\n");
}

TEST_F(TraceLog, ANewOneIsForItsOwnerAlone) {
  const auto mode_of = [](std::string log) {
    StartOlhLog(log.data());
    struct stat status = {};
    return stat(log.c_str(), &status) == 0 ? status.st_mode & 0777 : 0;
  };
  umask(022);
  EXPECT_EQ(mode_of(dir + "/log"), 0600U);
  const std::string shared = write("shared", "");
  chmod(shared.c_str(), 0664);
  EXPECT_EQ(mode_of(shared), 0664U) << "one that is there keeps its mode";
}

TEST_F(TraceLog, DoesNotWaitForTheReaderOfAFifo) {
  std::string fifo = make_fifo("fifo");
  StartOlhLog(fifo.data());
  OlhLogReturn("X", 0);
  EXPECT_EQ(access(fifo.c_str(), F_OK), 0) << "came back, and left it alone";
}

TEST_F(TraceLog, GoesToAPipeAndOutlivesItsReader) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  std::string name = "/dev/fd/" + std::to_string(ends[1]);
  StartOlhLog(name.data());
  OlhLogReturn("X", 0);
  char line[32] = "";
  ASSERT_GT(read(ends[0], line, sizeof line - 1), 0);
  EXPECT_STREQ(line, "X returned 0\n");
  close(ends[0]);
  OlhLogReturn("X", 0);  // raised SIGPIPE, which ends a process
  CloseOlhLog();
  close(ends[1]);
}

TEST_F(TraceLog, BeginsWithTheCallsThatFirstUseMakes) {
  const std::string log = dir + "/log";
  set("OLH_LOG_HELP", log);
  set("QEL_DOC_TYPE", "pdf:html");
  OlhGetDocPath(nullptr);
  EXPECT_EQ(read_file(log),
            "OlhSetViewerOrder( \"pdf:html\" );\n"
            "OlhSetViewer( \"OLH_VIEWER_HTML\" );\n"
            "OlhSetViewer returned 0\n"
            "OlhSetViewer( \"OLH_VIEWER_PDF\" );\n"
            "OlhSetViewer returned 0\n"
            "OlhSetViewerOrder returned 0\n"
            "OlhGetDocPath();\n"
            "OlhGetDocPath returned 3\n");
}

TEST_F(TraceLog, VersionHasNoResultLineAndNothingHasNoLine) {
  const std::string log = dir + "/log";
  set("OLH_LOG_HELP", log);
  EXPECT_STREQ(OlhVersion(), "v4.3_2.1");
  int (*const nothing[])(...) = {OlhAppExit,  OlhDocGotoPage, OlhCheckForPlugins, OlhCloseAllDocs,
                                 OlhDocClose, OlhDocFind,     OlhMenuItemExecute};
  for (const auto call : nothing) EXPECT_EQ(call("x", 3), OLH_RESULT_FAILED);
  EXPECT_EQ(read_file(log), "OlhVersion( \"v4.3_2.1\" );\n");
}

TEST(Names, ValuesOutsideTheTablesHaveNone) {
  for (const int viewer : {OLH_VIEWER_TOMEDECK - 1, OLH_VIEWER_HTML + 1, 99})
    EXPECT_STREQ(OlhViewer_toString(viewer), "");
  for (const int type : {OLH_DISPLAY_NORMAL - 1, OLH_DISPLAY_POPUP + 1, 99})
    EXPECT_STREQ(OlhDisplayType_toString(type), "");
}

using DebugOutput = Scratch;

TEST_F(DebugOutput, IsOnForAnyNonEmptyValueAndReadAgainAtAHelpCallAndATest) {
  const auto lines = [](const char* value, int (*call)()) {
    set("OLH_DEBUG", value);
    return standard_error_of(call);
  };
  const auto help = [] { return OlhHelpCall("", "", 0); };
  EXPECT_EQ(lines("", help), "");
  // Still off when the entry line of a help call would be written, on from there.
  EXPECT_EQ(lines("0", help), "OlhHelpCall: failed (returned 3)\n");
  EXPECT_EQ(lines("1", help), "OlhHelpCall\nOlhHelpCall: failed (returned 3)\n");
  EXPECT_EQ(lines("", help), "OlhHelpCall\n");
  EXPECT_EQ(lines("1", [] { return OlhHelpTest("", ""); }), "OlhHelpTest\nOlhHelpTest: failed (returned 3)\n");
}

TEST_F(DebugOutput, DoesNotEndAHostWhoseStandardErrorNobodyReads) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  close(ends[0]);
  const int standard_error = dup(STDERR_FILENO);
  dup2(ends[1], STDERR_FILENO);
  set("OLH_DEBUG", "1");
  setDebugVariable();
  print_debug("nobody reads this\n");
  sigset_t pending;
  sigpending(&pending);
  dup2(standard_error, STDERR_FILENO);
  EXPECT_EQ(sigismember(&pending, SIGPIPE), 0) << "nor is the signal kept for later";
  close(standard_error);
  close(ends[1]);
}

}  // namespace
