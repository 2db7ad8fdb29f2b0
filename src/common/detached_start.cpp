#include "detached_start.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <ctime>
#include <vector>

#include "bounded_text.h"
#include "directory_list.h"
#include "environment.h"
#include "olh/olh.h"
#include "retry.h"
#include "unique_fd.h"

namespace olh {

namespace {

constexpr int kFirstForeignDescriptor = 3;
constexpr time_t kSecondsToWatch = 2;
constexpr const char* kShell = "/bin/sh";

// Where a bare name is looked for. As in the C library: an empty piece of PATH is the working directory, and without
// PATH the system's two directories are searched.
std::vector<std::string> candidates_along_path(const std::string& program) {
  const char* variable = program_directories();
  const std::string_view path = variable == nullptr ? std::string_view("/bin:/usr/bin") : variable;
  std::vector<std::string> candidates;
  for (std::size_t begin = 0; begin <= path.size();) {
    const std::size_t end = std::min(path.find(':', begin), path.size());
    const std::string_view directory = path.substr(begin, end - begin);
    if (directory.size() < PATH_MAX) candidates.push_back(path_in(directory.empty() ? "." : directory, program));
    begin = end + 1;
  }
  return candidates;
}

std::vector<std::string> candidates_of(const std::string& program) {
  const bool bare = !program.empty() && program.find('/') == std::string::npos;
  std::vector<std::string> candidates = bare ? candidates_along_path(program) : std::vector{program};
  // The shell that runs a script without a "#!" line must not take its name for an option.
  for (std::string& candidate : candidates)
    if (candidate.starts_with('-')) candidate.insert(0, "./");
  return candidates;
}

// All that the children need, made before the fork: in a host with busy threads a child that allocates, or reads the
// environment, may wait for ever on a lock that nobody holds any more.
class PreparedProgram {
 public:
  explicit PreparedProgram(std::span<const std::string> words)
      : words_(words.begin(), words.end()), candidates_(candidates_of(words_.at(0))) {
    for (std::string& word : words_) arguments_.push_back(word.data());
    arguments_.push_back(nullptr);
    script_arguments_ = {shell_.data(), nullptr};
    script_arguments_.insert(script_arguments_.end(), arguments_.begin() + 1, arguments_.end());
    for (std::string& candidate : candidates_) candidate_pointers_.push_back(candidate.data());
  }
  PreparedProgram(const PreparedProgram&) = delete;
  PreparedProgram& operator=(const PreparedProgram&) = delete;

  // Becomes the program, or ends the process with the error of the search: as execlp would report it.
  [[noreturn]] void execute() noexcept {
    int error = ENOENT;
    bool denied = false;
    for (char* candidate : candidate_pointers_) {
      error = try_candidate(candidate);
      denied = denied || error == EACCES;
      if (!means_search_on(error)) _exit(error);
    }
    _exit(denied ? EACCES : error);
  }

 private:
  int try_candidate(char* candidate) noexcept {
    execv(candidate, arguments_.data());
    if (errno != ENOEXEC) return errno;
    script_arguments_[1] = candidate;
    execv(kShell, script_arguments_.data());
    return errno;
  }

  static bool means_search_on(int error) noexcept {
    return error == EACCES || error == ENOENT || error == ESTALE || error == ENOTDIR || error == ENODEV ||
           error == ETIMEDOUT;
  }

  std::vector<std::string> words_;
  std::vector<std::string> candidates_;
  std::string shell_ = kShell;
  std::vector<char*> arguments_;
  std::vector<char*> script_arguments_;
  std::vector<char*> candidate_pointers_;
};

// The way on which the intermediate child tells its status once more, for a host that gets none from waitpid because
// it ignores SIGCHLD or collects its children elsewhere. Without free descriptors there is none.
struct ReportPipe {
  ReportPipe() {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) return;
    from_child = UniqueFd(ends[0]);
    to_host = UniqueFd(ends[1]);
  }

  UniqueFd from_child;
  UniqueFd to_host;
};

// No signal reaches the thread while this lives: the host's handlers must not run in the child.
class SignalsHeldBack {
 public:
  SignalsHeldBack() noexcept {
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before_);
  }
  ~SignalsHeldBack() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
  SignalsHeldBack(const SignalsHeldBack&) = delete;
  SignalsHeldBack& operator=(const SignalsHeldBack&) = delete;

 private:
  sigset_t before_;
};

// ---- in the children: async-signal-safe calls only ----------------------------------------------------------

void reset_signals() noexcept {
  struct sigaction standard = {};
  standard.sa_handler = SIG_DFL;
  for (int signal = 1; signal < NSIG; ++signal) sigaction(signal, &standard, nullptr);
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
}

void close_descriptors(int first, int last) noexcept {
  if (first > last) return;
#ifdef SYS_close_range
  if (syscall(SYS_close_range, first, last, 0) == 0) return;
#endif
  const int end = std::min(last, getdtablesize() - 1);
  for (int fd = first; fd <= end; ++fd) close(fd);
}

// Everything from 3 up, except the one to keep (-1: none).
void close_foreign_descriptors(int keep) noexcept {
  close_descriptors(kFirstForeignDescriptor, keep < 0 ? INT_MAX : keep - 1);
  if (keep >= 0) close_descriptors(keep + 1, INT_MAX);
}

// A host may have closed its standard streams: the first file that the viewer opens must not take their place and
// receive its messages.
void fill_standard_descriptors() noexcept {
  int fd = 0;
  while (fd >= 0 && fd < kFirstForeignDescriptor) fd = open("/dev/null", O_RDWR);
  if (fd >= 0) close(fd);
}

// fork without the host's fork handlers, which may do in a child what no child may do here.
pid_t fork_child() noexcept {
#if defined(__GLIBC__) && __GLIBC_PREREQ(2, 34)
  return _Fork();
#else
  return fork();
#endif
}

[[noreturn]] void leave(int status, int report) noexcept {
  const auto byte = static_cast<unsigned char>(status);
  if (report >= 0) retry_interrupted([&] { return write(report, &byte, sizeof byte); });
  _exit(status);
}

// What the viewer's end, if it has ended, means for the one who asked for it.
int status_of_viewer(pid_t viewer) noexcept {
  int status = 0;
  const pid_t ended = retry_interrupted([&] { return waitpid(viewer, &status, WNOHANG); });
  if (ended != viewer || !WIFEXITED(status) || WEXITSTATUS(status) == 0) return OLH_RESULT_OK;
  return WEXITSTATUS(status) == ENOENT ? OLH_RESULT_NO_PROGRAM : OLH_RESULT_FAILED;
}

[[noreturn]] void run_intermediate_child(PreparedProgram& program, int report) noexcept {
  reset_signals();
  close_foreign_descriptors(report);
  fill_standard_descriptors();
  const pid_t viewer = fork_child();
  if (viewer == 0) program.execute();  // `report` is close-on-exec
  if (viewer < 0) leave(OLH_RESULT_FAILED, report);
  timespec left = {kSecondsToWatch, 0};
  retry_interrupted([&] { return nanosleep(&left, &left); });
  leave(status_of_viewer(viewer), report);
}

// ---- in the host -------------------------------------------------------------------------------------------------

pid_t fork_intermediate_child(PreparedProgram& program, int report) noexcept {
  const SignalsHeldBack quiet;
  const pid_t child = fork_child();
  if (child == 0) run_intermediate_child(program, report);
  return child;
}

DetachedStart from_status(int status) noexcept {
  return {status == 0 ? StartOutcome::kStarted : StartOutcome::kFailed, status};
}

DetachedStart wait_for(pid_t child, int report) noexcept {
  int status = 0;
  if (retry_interrupted([&] { return waitpid(child, &status, 0); }) == child)
    return from_status(WIFEXITED(status) ? WEXITSTATUS(status) : 0);
  if (errno != ECHILD || report < 0) return {StartOutcome::kWaitFailed};
  // Somebody else has collected the child, so it has ended: its report is there, or a signal has ended it, which
  // counts as started.
  unsigned char byte = 0;
  retry_interrupted([&] { return read(report, &byte, sizeof byte); });
  return from_status(byte);
}

}  // namespace

DetachedStart start_detached(std::span<const std::string> words) {
  PreparedProgram program(words);
  const ReportPipe report;
  const pid_t child = fork_intermediate_child(program, report.to_host.get());
  if (child < 0) return {StartOutcome::kForkFailed};
  return wait_for(child, report.from_child.get());
}

}  // namespace olh
