#include "command.h"

#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "retry.h"

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

}  // namespace

int run_command(const std::string& command) {
  const int status = std::system(as_shell_word(command).c_str());
  return status != -1 && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

bool read_command(const std::string& command, const std::function<void(std::string_view line)>& on_line,
                  const std::function<void()>& on_started) {
  const CommandPipe output(popen(as_shell_word(command).c_str(), "re"));
  if (output == nullptr) return false;
  if (on_started) on_started();
  // Read below the stream, whose reading would end at the first signal that the host handles.
  std::array<char, 4096> block;
  std::string pending;
  for (;;) {
    const ssize_t count = retry_interrupted([&] { return ::read(fileno(output.get()), block.data(), block.size()); });
    if (count <= 0) break;
    pending.append(block.data(), static_cast<std::size_t>(count));
    hand_on_lines(pending, on_line);
  }
  if (!pending.empty()) on_line(pending);
  return true;
}

}  // namespace olh
