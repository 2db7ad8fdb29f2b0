#include "command.h"

#include <sys/wait.h>

#include <string>

#include "host.h"
#include "scratch.h"

namespace {

using olh_test::Words;

Words output_of(const std::string& command) {
  Words lines;
  olh::read_command(command, [&](std::string_view line) { lines.emplace_back(line); });
  return lines;
}

using Command = olh_test::Scratch;

TEST_F(Command, StatusOfTheCommand) {
  EXPECT_EQ(olh::run_command("true"), 0);
  EXPECT_EQ(olh::run_command("exit 3"), 3);
  EXPECT_EQ(olh::run_command("/no/such/program 2>/dev/null"), 127);
  EXPECT_EQ(olh::run_command("kill -9 $$"), -1);
  signal(SIGCHLD, SIG_IGN);
  EXPECT_EQ(olh::run_command("true"), -1) << "unknown in a host that ignores its children";
}

TEST_F(Command, ProgramNamedLikeAnOptionIsNone) {
  for (const char* name : {"-x", "-c", "+x"}) {
    const olh_test::Recorder program = add_viewer(name);
    program.on_start(4);
    EXPECT_EQ(olh::run_command(std::string(name) + " a"), 4) << name;
    EXPECT_EQ(output_of(std::string(name) + " b"), Words{}) << name;
    EXPECT_EQ(program.arguments(), (std::vector<Words>{{"a"}, {"b"}})) << name;
  }
}

TEST_F(Command, OutputComesInLinesAndNoChildIsLeftBehind) {
  EXPECT_EQ(output_of("printf 'a\\n\\nb c\\r\\nlast'"), (Words{"a", "", "b c\r", "last"}));
  EXPECT_EQ(output_of("true"), Words{});
  EXPECT_EQ(output_of("exit 3"), Words{});
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
  EXPECT_EQ(errno, ECHILD);
}

TEST_F(Command, LongLineComesInPieces) {
  const std::string piece(olh::kMaxLinePiece, 'x');
  EXPECT_EQ(output_of("head -c 20000 /dev/zero | tr '\\0' x; echo; echo end"),
            (Words{piece, piece, std::string(20000 - 2 * piece.size(), 'x'), "end"}));
}

TEST_F(Command, SignalsOfTheHostLoseNoOutput) {
  olh_test::interrupt_every(5000);
  EXPECT_EQ(output_of("sleep 0.1; echo one; sleep 0.1; echo two"), (Words{"one", "two"}));
}

TEST_F(Command, NothingIsCalledWhenTheCommandCannotStart) {
  const olh_test::Limit no_descriptors(RLIMIT_NOFILE, 0);
  int calls = 0;
  olh::read_command(
      "echo x", [&](std::string_view) { ++calls; }, [&] { ++calls; });
  EXPECT_EQ(calls, 0);
}

TEST_F(Command, WorksInAHostWithClosedStandardStreams) {
  Words output;
  int status = 0;
  {
    const olh_test::ClosedStreams none;
    output = output_of("echo there 2>&1");
    status = olh::run_command("exit 3");
  }
  EXPECT_EQ(output, Words{"there"});
  EXPECT_EQ(status, 3);
}

}  // namespace
