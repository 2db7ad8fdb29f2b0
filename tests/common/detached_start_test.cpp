#include "detached_start.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>

#include <atomic>
#include <future>
#include <string>

#include "host.h"
#include "olh/olh.h"
#include "scratch.h"

namespace {

using olh::StartOutcome;
using olh_test::Words;

struct Case {
  Words words;
  StartOutcome outcome;
  int status;
};

const std::vector<Case> kOutcomes = {
    {{"/bin/sh", "-c", "exit 0"}, StartOutcome::kStarted, 0},
    {{"/bin/sh", "-c", "sleep 3"}, StartOutcome::kStarted, 0},
    {{"/bin/sh", "-c", "kill -9 $$"}, StartOutcome::kStarted, 0},
    {{"/bin/sh", "-c", "exit 1"}, StartOutcome::kFailed, OLH_RESULT_FAILED},
    {{"/bin/sh", "-c", "exit 2"}, StartOutcome::kFailed, OLH_RESULT_NO_PROGRAM},
    {{"/no/such/program"}, StartOutcome::kFailed, OLH_RESULT_NO_PROGRAM},
    {{"no-such-program"}, StartOutcome::kFailed, OLH_RESULT_NO_PROGRAM},
    {{""}, StartOutcome::kFailed, OLH_RESULT_NO_PROGRAM},
    {{"/"}, StartOutcome::kFailed, OLH_RESULT_FAILED},
};

// Every case on a thread of its own: they take two seconds together, and a host with many threads is safe.
void expect_outcomes(const std::vector<Case>& cases) {
  std::vector<std::future<olh::DetachedStart>> starts;
  for (const Case& test : cases)
    starts.push_back(std::async(std::launch::async, [&test] { return olh::start_detached(test.words); }));
  for (std::size_t i = 0; i < cases.size(); ++i) {
    const olh::DetachedStart start = starts[i].get();
    SCOPED_TRACE(testing::PrintToString(cases[i].words));
    EXPECT_EQ(start.outcome, cases[i].outcome);
    EXPECT_EQ(start.status, cases[i].status);
  }
}

class DetachedStart : public olh_test::Scratch {
 protected:
  // A script that writes into `out`.
  std::string add_script(const std::string& relative, const std::string& text) const {
    return make_program(relative, text + " >" + dir + "/out\n");
  }
  std::string output_of_script() const { return olh_test::read_file(dir + "/out"); }
};

// Each argument on a line.
constexpr char kPrintArguments[] = "printf '%s\\n' \"$@\"";

TEST_F(DetachedStart, OutcomesAndNoZombie) {
  expect_outcomes(kOutcomes);
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
  EXPECT_EQ(errno, ECHILD);
}

TEST_F(DetachedStart, SameOutcomesInAHostThatIgnoresItsChildren) {
  signal(SIGCHLD, SIG_IGN);
  expect_outcomes(kOutcomes);
}

TEST_F(DetachedStart, SameOutcomesInAHostThatCollectsEveryChildAndIsInterrupted) {
  olh_test::handle(SIGCHLD, [](int) {
    while (waitpid(-1, nullptr, WNOHANG) > 0) {
    }
  });
  olh_test::interrupt_every(20000);
  expect_outcomes(kOutcomes);
}

TEST_F(DetachedStart, ProgramGetsItsArgumentsAndNothingElseOfTheHost) {
  const olh_test::Recorder viewer = add_viewer("viewer");
  olh_test::handle(SIGUSR1, [](int) {});
  signal(SIGCHLD, SIG_IGN);
  signal(SIGPIPE, SIG_IGN);
  sigset_t set;
  sigfillset(&set);
  sigprocmask(SIG_SETMASK, &set, nullptr);
  ASSERT_GE(fcntl(0, F_DUPFD, 3), 3);
  ASSERT_GE(fcntl(0, F_DUPFD, 200), 200);
  const Words arguments = {"", "-x", "$(touch x) `y`", "it's \"z\"", "a\nb", "\xff"};
  Words words = arguments;
  words.insert(words.begin(), viewer.path);
  olh::start_detached(words);
  EXPECT_EQ(viewer.arguments(), std::vector<Words>{arguments});
  const olh_test::Invocation call = viewer.invocations().at(0);
  EXPECT_EQ(call.open_descriptors, "");
  EXPECT_EQ(call.ignored_signals, "0000000000000000");
  EXPECT_EQ(call.blocked_signals, "0000000000000000");
  sigset_t after;
  sigprocmask(SIG_SETMASK, nullptr, &after);
  EXPECT_EQ(sigismember(&after, SIGUSR1), 1) << "the host's own mask has changed";
}

// A host's handler may wait for a lock that no thread of the child will ever give back.
TEST_F(DetachedStart, ForkHandlersOfTheHostDoNotRunInItsChildren) {
  static int told[2];
  ASSERT_EQ(pipe2(told, O_CLOEXEC | O_NONBLOCK), 0);
  ASSERT_EQ(pthread_atfork(nullptr, nullptr, [] { [[maybe_unused]] const ssize_t sent = ::write(told[1], "x", 1); }),
            0);
  const pid_t child = fork();
  if (child == 0) _exit(0);
  waitpid(child, nullptr, 0);
  char byte = 0;
  EXPECT_EQ(read(told[0], &byte, 1), 1) << "the handler is there";
  olh::start_detached(Words{"true"});
  EXPECT_EQ(read(told[0], &byte, 1), -1);
  close(told[0]);
  close(told[1]);
}

// Whatever lock of the C library they hold at that moment, no child waits for it.
TEST_F(DetachedStart, ThreadsThatSpawnMeanwhileDoNotFreezeTheHost) {
  std::atomic<bool> stop = false;
  const auto spawn_all_the_time = [&stop] {
    char name[] = "true";
    char* const arguments[] = {name, nullptr};
    for (pid_t child = 0; !stop; waitpid(child, nullptr, 0))
      if (posix_spawn(&child, "/bin/true", nullptr, nullptr, arguments, environ) != 0) return false;
    return true;
  };
  std::vector<std::future<bool>> threads;
  for (int i = 0; i < 4; ++i) threads.push_back(std::async(std::launch::async, spawn_all_the_time));
  expect_outcomes(kOutcomes);
  stop = true;
  for (std::future<bool>& thread : threads) EXPECT_TRUE(thread.get());
}

TEST_F(DetachedStart, DescriptorsAreClosedOneByOneWhereTheSystemKnowsNoRange) {
  if (!olh_test::refuse(SYS_close_range, ENOSYS)) GTEST_SKIP() << "no system call filter here";
  const olh_test::Recorder viewer = add_viewer("viewer");
  ASSERT_GE(fcntl(0, F_DUPFD, 100), 100);
  olh::start_detached(Words{viewer.path});
  EXPECT_EQ(viewer.invocations().at(0).open_descriptors, "");
}

TEST_F(DetachedStart, ClosedStandardStreamsOfTheHostAreNoFileOfTheViewer) {
  const std::string script =
      add_script("show", "#!/bin/sh\nseen=$(readlink /proc/$$/fd/0 /proc/$$/fd/1 /proc/$$/fd/2)\necho \"$seen\"");
  const auto start = [&] {
    const olh_test::ClosedStreams none;
    return olh::start_detached(Words{script});
  };
  EXPECT_EQ(start().outcome, StartOutcome::kStarted);
  EXPECT_EQ(output_of_script(), "/dev/null\n/dev/null\n/dev/null\n");
}

// As execlp would find them: what cannot be executed is passed over, and remembered when nothing else is found.
TEST_F(DetachedStart, BareNamesAreSearchedAlongPath) {
  write("first/found", "not executable");
  add_viewer("found", "second");
  add_viewer("here", "working");
  write("first/denied", "not executable");
  set("PATH", dir + "/first:" + dir + "/no-such-directory::" + dir + "/second");
  ASSERT_EQ(chdir((dir + "/working").c_str()), 0);
  expect_outcomes({
      {{"found"}, StartOutcome::kStarted, 0},
      {{"here"}, StartOutcome::kStarted, 0},
      {{"denied"}, StartOutcome::kFailed, OLH_RESULT_FAILED},
      {{std::string(300, 'x')}, StartOutcome::kFailed, OLH_RESULT_FAILED},
  });
}

TEST_F(DetachedStart, WithoutPathTheSystemsDirectoriesAreSearched) {
  unset("PATH");
  EXPECT_EQ(olh::start_detached(Words{"sh", "-c", "exit 2"}).status, OLH_RESULT_NO_PROGRAM);
}

TEST_F(DetachedStart, ScriptWithoutFirstLineRunsInTheShell) {
  add_script("bin/script", kPrintArguments);
  EXPECT_EQ(olh::start_detached(Words{"script", "a b", "$c"}).outcome, StartOutcome::kStarted);
  EXPECT_EQ(output_of_script(), "a b\n$c\n");
}

TEST_F(DetachedStart, ScriptNamedLikeAnOptionIsNone) {
  add_script("-c/-e", kPrintArguments);
  ASSERT_EQ(chdir(dir.c_str()), 0);
  EXPECT_EQ(olh::start_detached(Words{"-c/-e", "a"}).outcome, StartOutcome::kStarted);
  EXPECT_EQ(output_of_script(), "a\n");
}

// A limit does not hold for root, who becomes another user for good; that user's leak checker may still look into the process.
bool is_no_superuser() {
  const auto nobody_else = static_cast<uid_t>(100000 + getpid());
  return geteuid() != 0 || (setresuid(nobody_else, nobody_else, nobody_else) == 0 && prctl(PR_SET_DUMPABLE, 1) == 0);
}

TEST(DetachedStartWithoutProcesses, NoFirstFork) {
  if (!is_no_superuser()) GTEST_SKIP() << "no limit here";
  const olh_test::Limit this_process(RLIMIT_NPROC, 1);
  EXPECT_EQ(olh::start_detached(Words{"/bin/true"}).outcome, StartOutcome::kForkFailed);
}

TEST(DetachedStartWithoutProcesses, NoSecondFork) {
  if (geteuid() != 0) GTEST_SKIP() << "only a user without other processes can be counted";
  ASSERT_TRUE(is_no_superuser());
  const olh_test::Limit this_process_and_one_more(RLIMIT_NPROC, 2);
  const olh::DetachedStart start = olh::start_detached(Words{"/bin/true"});
  EXPECT_EQ(start.outcome, StartOutcome::kFailed);
  EXPECT_EQ(start.status, OLH_RESULT_FAILED);
}

}  // namespace
