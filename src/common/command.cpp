#include "command.h"

#include <fcntl.h>
#include <sched.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "child.h"
#include "environment.h"
#include "raw_call.h"
#include "retry.h"
#include "unique_fd.h"

namespace olh {

namespace {

struct ClosePipe {
  void operator()(FILE* stream) const noexcept { pclose(stream); }
};
using CommandPipe = std::unique_ptr<FILE, ClosePipe>;

// The shell gets the command as a word behind "-c" and looks for options in it: a blank in front, which means nothing
// in a command, keeps a program whose name begins like an option from being one.
std::string as_shell_word(const std::string& command) {
  const bool like_an_option = command.starts_with('-') || command.starts_with('+');
  return like_an_option ? " " + command : command;
}

// A shell of our own, for a process with borrowed rights: popen and system would lend them to it.
struct Shell {
  // Programs are looked for in the system's directories: the caller's PATH does not count.
  explicit Shell(const std::string& command)
      : program(std::vector<std::string>{"/bin/sh", "-c",
                                         std::string("PATH=") + program_directories() + "; " + command}) {}

  ChildProgram program;
  int output = -1;  // -1: the host's own
  ChildStack stack;
};

int become_shell(void* argument) noexcept {
  Shell& shell = *static_cast<Shell*>(argument);
  if (shell.output >= 0) raw_call(SYS_dup3, shell.output, STDOUT_FILENO, 0);
  shell.program.keep_standard_descriptors();
  return shell.program.execute();
}

pid_t start_shell(const std::string& command, int output) {
  const auto shell = std::make_unique<Shell>(command);
  shell->output = output;
  return start_child(become_shell, shell.get(), shell->stack, CLONE_VFORK | (can_share_memory() ? CLONE_VM : 0));
}

// -1 when it cannot be known.
int wait_status_of(pid_t child) noexcept {
  int status = -1;
  return child >= 0 && retry_interrupted([&] { return waitpid(child, &status, 0); }) == child ? status : -1;
}

int run_without_borrowed_rights(const std::string& command) { return wait_status_of(start_shell(command, -1)); }

// Hands on the whole lines at the front of `pending` and keeps the rest, which is shorter than a piece.
void hand_on_lines(std::string& pending, const std::function<void(std::string_view)>& on_line) {
  std::string_view rest(pending);
  for (;;) {
    const std::size_t end = rest.substr(0, kMaxLinePiece).find('\n');
    if (end != std::string_view::npos) {
      on_line(rest.substr(0, end));
      rest.remove_prefix(end + 1);
    } else if (rest.size() >= kMaxLinePiece) {
      on_line(rest.substr(0, kMaxLinePiece));
      rest.remove_prefix(kMaxLinePiece);
    } else {
      break;
    }
  }
  pending.erase(0, pending.size() - rest.size());
}

void read_lines(int output, const std::function<void(std::string_view)>& on_line) {
  std::array<char, 4096> block;
  std::string pending;
  for (;;) {
    const ssize_t count = retry_interrupted([&] { return ::read(output, block.data(), block.size()); });
    if (count <= 0) break;
    pending.append(block.data(), static_cast<std::size_t>(count));
    hand_on_lines(pending, on_line);
  }
  if (!pending.empty()) on_line(pending);
}

void read_without_borrowed_rights(const std::string& command, const std::function<void(std::string_view)>& on_line,
                                  const std::function<void()>& on_started) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return;
  const UniqueFd output(ends[0]);
  UniqueFd input(ends[1]);
  const pid_t shell = start_shell(command, input.get());
  if (shell < 0) return;
  input.close();
  if (on_started) on_started();
  read_lines(output.get(), on_line);
  wait_status_of(shell);
}

}  // namespace

int run_command(const std::string& command) {
  const int status =
      has_borrowed_rights() ? run_without_borrowed_rights(command) : std::system(as_shell_word(command).c_str());
  return status != -1 && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void read_command(const std::string& command, const std::function<void(std::string_view line)>& on_line,
                  const std::function<void()>& on_started) {
  if (has_borrowed_rights()) return read_without_borrowed_rights(command, on_line, on_started);
  const CommandPipe output(popen(as_shell_word(command).c_str(), "re"));
  if (output == nullptr) return;
  if (on_started) on_started();
  // Read below the stream, whose reading would end at the first signal that the host handles.
  read_lines(fileno(output.get()), on_line);
}

}  // namespace olh
