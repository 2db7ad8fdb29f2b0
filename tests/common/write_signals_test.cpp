// A host whose files may not grow, and which has no handler for the signal that says so.
#include <fcntl.h>
#include <unistd.h>

#include <optional>

#include "host.h"
#include "olh/dmerge.h"
#include "olh/support.h"
#include "scratch.h"

namespace {

using FileSizeLimit = olh_test::Scratch;

void write_debug_line(const std::string& file) {
  const int standard_error = dup(STDERR_FILENO);
  const int fd = open(file.c_str(), O_WRONLY | O_APPEND);
  dup2(fd, STDERR_FILENO);
  print_debug("this does not fit\n");
  dup2(standard_error, STDERR_FILENO);
  close(standard_error);
  close(fd);
}

bool is_pending() {
  sigset_t pending;
  sigpending(&pending);
  return sigismember(&pending, SIGXFSZ) == 1;
}

// Before, each of these ended the host.
TEST_F(FileSizeLimit, MakesAWriteFailAndDoesNotEndTheHost) {
  constexpr int kBrowserKey = 1;
  constexpr int kUserFile = 1;
  const std::string text = "# as it was\n";
  const std::string root = make_root("docs");
  const std::string log = write("trace.log", text);
  const std::string options = write("home/.qel_viewer_config.ini", text);
  const std::string list = write("docs/htmldocs/QEL/lib/LibraryAvailable.js", text);
  const std::string debug_lines = write("debug_lines", text);
  std::optional<olh_test::Limit> limit(std::in_place, RLIMIT_FSIZE, text.size());
  StartOlhLog(std::string(log).data());
  EXPECT_EQ(SetIniFile(kBrowserKey, "/b", kUserFile), OLH_RESULT_IO);
  EXPECT_EQ(writeLibAvail(root.c_str()), DMERGE_RESULT_UNWRITABLE);
  OlhVersion();
  set("OLH_DEBUG", "1");
  setDebugVariable();
  write_debug_line(debug_lines);
  EXPECT_FALSE(is_pending()) << "would end the host later";
  sigset_t mask;
  pthread_sigmask(SIG_SETMASK, nullptr, &mask);
  EXPECT_EQ(sigismember(&mask, SIGXFSZ), 0);
  for (const std::string& file : {log, options, list, debug_lines})
    EXPECT_EQ(olh_test::read_file(file), text) << file;

  sigaddset(&mask, SIGXFSZ);
  pthread_sigmask(SIG_SETMASK, &mask, nullptr);
  raise(SIGXFSZ);
  write_debug_line(debug_lines);
  limit.reset();
  EXPECT_TRUE(is_pending()) << "the host's own, which it waits for";
}

}  // namespace
