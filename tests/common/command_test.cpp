#include "command.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <sys/wait.h>

#include <csignal>
#include <string>
#include <vector>

#include "scratch.h"

namespace {

using Lines = std::vector<std::string>;

struct Output {
  bool started = false;
  Lines lines;
};

Output output_of(const std::string& command) {
  Output output;
  output.started = olh::read_command(command, [&](std::string_view line) { output.lines.emplace_back(line); });
  return output;
}

void go_on(int) {}

// A host whose own timer interrupts every call that waits.
void interrupt_all_the_time() {
  struct sigaction action = {};
  action.sa_handler = go_on;
  sigaction(SIGALRM, &action, nullptr);
  const itimerval every_5_ms = {{0, 5000}, {0, 5000}};
  setitimer(ITIMER_REAL, &every_5_ms, nullptr);
}

using Command = olh_test::Scratch;

TEST_F(Command, StatusOfTheCommand) {
  EXPECT_EQ(olh::run_command("true"), 0);
  EXPECT_EQ(olh::run_command("exit 3"), 3);
  EXPECT_EQ(olh::run_command("/no/such/program 2>/dev/null"), 127);
  EXPECT_EQ(olh::run_command("kill -9 $$"), -1);
}

TEST_F(Command, StatusIsUnknownInAHostThatIgnoresItsChildren) {
  signal(SIGCHLD, SIG_IGN);
  EXPECT_EQ(olh::run_command("true"), -1);
}

TEST_F(Command, ProgramNamedLikeAnOptionIsNone) {
  for (const char* name : {"-x", "-c", "+x"}) {
    const olh_test::Recorder program = add_viewer(name);
    program.on_start(4);
    EXPECT_EQ(olh::run_command(std::string(name) + " a"), 4) << name;
    EXPECT_EQ(output_of(std::string(name) + " b").lines, Lines{}) << name;
    ASSERT_EQ(program.invocations().size(), 2U) << name;
    EXPECT_EQ(program.invocations()[1].arguments, Lines{"b"}) << name;
  }
}

TEST_F(Command, OutputComesInLines) {
  EXPECT_EQ(output_of("printf 'a\\n\\nb c\\r\\nlast'").lines, (Lines{"a", "", "b c\r", "last"}));
  EXPECT_EQ(output_of("true").lines, Lines{});
  EXPECT_EQ(output_of("exit 3").lines, Lines{});
}

TEST_F(Command, LongLineComesInPieces) {
  const Output output = output_of("head -c 20000 /dev/zero | tr '\\0' x; echo; echo end");
  ASSERT_EQ(output.lines.size(), 4U);
  EXPECT_EQ(output.lines[0], std::string(olh::kMaxLinePiece, 'x'));
  EXPECT_EQ(output.lines[1], std::string(olh::kMaxLinePiece, 'x'));
  EXPECT_EQ(output.lines[2], std::string(20000 - 2 * olh::kMaxLinePiece, 'x'));
  EXPECT_EQ(output.lines[3], "end");
}

TEST_F(Command, SignalsOfTheHostLoseNoOutput) {
  interrupt_all_the_time();
  EXPECT_EQ(output_of("sleep 0.1; echo one; sleep 0.1; echo two").lines, (Lines{"one", "two"}));
}

TEST_F(Command, NothingIsCalledWhenTheCommandCannotStart) {
  rlimit limit = {};
  getrlimit(RLIMIT_NOFILE, &limit);
  limit.rlim_cur = 0;
  setrlimit(RLIMIT_NOFILE, &limit);
  int calls = 0;
  EXPECT_FALSE(olh::read_command(
      "echo x", [&](std::string_view) { ++calls; }, [&] { ++calls; }));
  EXPECT_EQ(calls, 0);
  limit.rlim_cur = limit.rlim_max;
  setrlimit(RLIMIT_NOFILE, &limit);
}

TEST_F(Command, WorksInAHostWithClosedStandardStreams) {
  const int saved[] = {dup(0), dup(1), dup(2)};
  for (int fd = 0; fd < 3; ++fd) close(fd);
  const Output output = output_of("echo there 2>&1");
  const int status = olh::run_command("exit 3");
  for (int fd = 0; fd < 3; ++fd) dup2(saved[fd], fd);
  EXPECT_EQ(output.lines, Lines{"there"});
  EXPECT_EQ(status, 3);
}

TEST_F(Command, NoChildIsLeftBehind) {
  output_of("echo x");
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
  EXPECT_EQ(errno, ECHILD);
}

}  // namespace
