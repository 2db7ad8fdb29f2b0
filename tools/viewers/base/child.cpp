#include "child.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <functional>

#include "files.h"
#include "platform.h"
#include "viewer_environment.h"

namespace olh_viewers {

namespace {

using Clock = std::chrono::steady_clock;

std::vector<char*> pointers_to(Words& words) {
  std::vector<char*> pointers;
  pointers.reserve(words.size() + 1);
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  return pointers;
}

// What becomes of a started program's descriptors and signals.
class Setup {
 public:
  Setup() {
    posix_spawn_file_actions_init(&actions);
    posix_spawnattr_init(&attributes);
    sigset_t none;
    sigset_t all;
    sigemptyset(&none);
    sigfillset(&all);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setsigdefault(&attributes, &all);
    flags(0);
  }
  ~Setup() {
    posix_spawn_file_actions_destroy(&actions);
    posix_spawnattr_destroy(&attributes);
  }
  Setup(const Setup&) = delete;
  Setup& operator=(const Setup&) = delete;

  void flags(int more) {
    posix_spawnattr_setflags(&attributes, static_cast<short>(POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | more));
  }
  void from_file(int fd, const char* path, int mode) {
    posix_spawn_file_actions_addopen(&actions, fd, path, mode | O_NONBLOCK, 0);
  }
  void in_directory(const std::string& path) { posix_spawn_file_actions_addchdir_np(&actions, path.c_str()); }
  void from_descriptor(int fd, int source) { posix_spawn_file_actions_adddup2(&actions, source, fd); }

  posix_spawn_file_actions_t actions;
  posix_spawnattr_t attributes;
};

// Both return 0 or an errno.
int spawn(Words words, const Setup& setup, char** environment, pid_t& child) {
  const std::vector<char*> arguments = pointers_to(words);
  return posix_spawnp(&child, arguments[0], &setup.actions, &setup.attributes, arguments.data(), environment);
}

int spawn_viewer(const Words& words, const Setup& setup, pid_t& child) {
  Words environment = viewer_environment();
  return spawn(words, setup, pointers_to(environment).data(), child);
}

int left_until(Clock::time_point end) {
  const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
  return left > 0 ? static_cast<int>(left) : 0;
}

// SIGCHLD waits to be taken while this lives, also in a process that was started with it ignored.
class ChildSignal {
 public:
  ChildSignal() {
    std::signal(SIGCHLD, SIG_DFL);
    sigemptyset(&signal_);
    sigaddset(&signal_, SIGCHLD);
    sigprocmask(SIG_BLOCK, &signal_, &before_);
  }
  ~ChildSignal() { sigprocmask(SIG_SETMASK, &before_, nullptr); }
  ChildSignal(const ChildSignal&) = delete;
  ChildSignal& operator=(const ChildSignal&) = delete;

  // Whether the child has ended before that time; `status` is then how.
  bool ends_until(pid_t child, Clock::time_point end, int& status) const {
    for (;;) {
      const pid_t ended = waitpid(child, &status, WNOHANG);
      if (ended == child) return true;
      const int left = left_until(end);
      if (left == 0 || (ended < 0 && errno != EINTR)) return false;
      const timespec time = {left / 1000, static_cast<long>(left % 1000) * 1000000};
      wait_for_signal(signal_, time);
    }
  }

 private:
  sigset_t signal_;
  sigset_t before_;
};

// Everything up to the end. `patience` tells each time for how many milliseconds it may be waited.
Heard read_patiently(int fd, const std::function<int()>& patience) {
  Heard heard;
  char block[16384];
  pollfd readable = {fd, POLLIN, 0};
  for (;;) {
    const int ready = poll(&readable, 1, patience());
    const ssize_t count = ready > 0 ? read(fd, block, sizeof block) : ready;
    if (count < 0 && errno == EINTR) continue;
    heard.in_time = ready != 0;
    if (count <= 0) return heard;
    heard.text.append(block, static_cast<std::size_t>(count));
  }
}

// Whether the pager took the text.
bool page(const std::string& text) {
  const Words chosen = pieces_of(variable("PAGER"), ' ');
  int ends[2];
  if (!make_pipe(ends)) return false;
  Setup setup;
  setup.from_descriptor(STDIN_FILENO, ends[0]);
  pid_t pager = 0;
  const int failed = spawn_viewer(chosen.empty() ? Words{"less", "-FX"} : chosen, setup, pager);
  close(ends[0]);
  std::signal(SIGPIPE, SIG_IGN);
  for (std::size_t written = 0; failed == 0 && written < text.size();) {
    const ssize_t count = write(ends[1], text.data() + written, text.size() - written);
    if (count < 0 && errno != EINTR) break;
    if (count > 0) written += static_cast<std::size_t>(count);
  }
  close(ends[1]);
  while (failed == 0 && waitpid(pager, nullptr, 0) < 0 && errno == EINTR) continue;
  return failed == 0;
}

// A terminal whose foreground belongs to others would stop a pager.
bool is_too_long_for_terminal(const std::string& text) {
  winsize size = {};
  if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0) return false;
  const pid_t foreground = tcgetpgrp(STDOUT_FILENO);
  return (foreground < 0 || foreground == getpgrp()) && std::count(text.begin(), text.end(), '\n') >= size.ws_row;
}

}  // namespace

int start_and_watch(const Words& words, int milliseconds, std::string& said, bool any_status) {
  const ChildSignal signal;
  Setup setup;
#ifdef POSIX_SPAWN_SETSID
  setup.flags(POSIX_SPAWN_SETSID);
#else
  setup.flags(POSIX_SPAWN_SETPGROUP);
#endif
  for (const int fd : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) setup.from_file(fd, "/dev/null", O_RDWR);
  pid_t child = 0;
  const int failed = spawn_viewer(words, setup, child);
  if (failed != 0) {
    said = std::string("could not be started: ") + std::strerror(failed);
    return failed == ENOENT ? kExitNoProgram : kExitFailed;
  }
  int status = 0;
  if (!signal.ends_until(child, Clock::now() + std::chrono::milliseconds(milliseconds), status)) return kExitShown;
  if (WIFEXITED(status) && (any_status || WEXITSTATUS(status) == 0)) return kExitShown;
  said = WIFEXITED(status) ? "ended with the status " + std::to_string(WEXITSTATUS(status))
                           : "was ended by the signal " + std::to_string(WTERMSIG(status));
  return kExitFailed;
}

std::optional<std::string> output_of(const Words& words, const std::string& input_file, int milliseconds,
                                     const std::string& directory) {
  const ChildSignal signal;
  int ends[2];
  if (!make_pipe(ends)) return std::nullopt;
  Setup setup;
  if (!directory.empty()) setup.in_directory(directory);
  setup.from_file(STDIN_FILENO, input_file.empty() ? "/dev/null" : input_file.c_str(), O_RDONLY);
  setup.from_descriptor(STDOUT_FILENO, ends[1]);
  setup.from_file(STDERR_FILENO, "/dev/null", O_WRONLY);
  pid_t child = 0;
  const int failed = spawn_viewer(words, setup, child);
  close(ends[1]);
  const Clock::time_point end = Clock::now() + std::chrono::milliseconds(milliseconds);
  const std::string text = failed == 0 ? read_patiently(ends[0], [end] { return left_until(end); }).text : "";
  close(ends[0]);
  if (failed != 0) return std::nullopt;
  int status = 0;
  if (!signal.ends_until(child, end, status)) {
    kill(child, SIGKILL);
    while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) continue;
    return std::nullopt;
  }
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) return std::nullopt;
  return text;
}

Heard heard_from(const Words& words, int milliseconds_of_silence) {
  int ends[2];
  if (!make_pipe(ends)) return {};
  Setup setup;
  setup.from_descriptor(STDOUT_FILENO, ends[1]);
  setup.from_file(STDERR_FILENO, "/dev/null", O_WRONLY);
  pid_t child = 0;
  const int failed = spawn(words, setup, environ, child);
  close(ends[1]);
  Heard heard = failed == 0 ? read_patiently(ends[0], [&] { return milliseconds_of_silence; }) : Heard();
  close(ends[0]);
  // One that hangs in a file system does not end even now, and is not waited for.
  if (!heard.in_time) kill(child, SIGKILL);
  while (failed == 0 && waitpid(child, nullptr, heard.in_time ? 0 : WNOHANG) < 0 && errno == EINTR) continue;
  return heard;
}

int run_and_wait(const Words& words) {
  pid_t child = 0;
  if (spawn(words, Setup(), environ, child) != 0) return kExitFailed;
  int status = 0;
  while (waitpid(child, &status, 0) < 0)
    if (errno != EINTR) return kExitFailed;
  return WIFEXITED(status) ? WEXITSTATUS(status) : kExitFailed;
}

void print_text(const std::string& text, bool paged) {
  if (paged && is_too_long_for_terminal(text) && page(text)) return;
  std::signal(SIGPIPE, SIG_IGN);  // whoever has read enough (head) has been shown the text
  std::fwrite(text.data(), 1, text.size(), stdout);
  std::fflush(stdout);
}

}  // namespace olh_viewers
