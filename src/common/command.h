// Commands that run through the shell while the caller waits.
//
// Knows    how a command is run, how its output is cut into lines, and when its exit status cannot be known.
// Not      what stands in the command (shell_quote makes its parts harmless).
// For      the browser's remote commands and the directory of the user's option file.
#ifndef OLH_COMMON_COMMAND_H
#define OLH_COMMON_COMMAND_H

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace olh {

// The bytes that a command line has, its NUL included. What is longer is not run.
constexpr std::size_t kCommandCapacity = 8192;
inline bool fits_a_command(std::string_view command) noexcept { return command.size() < kCommandCapacity; }

// The longest piece of an output line: with a NUL it fills the 8192 bytes that one line has.
constexpr std::size_t kMaxLinePiece = 8191;

// Runs a command. Returns its exit status; -1 when it is not known: the command did not start, ended by a signal, or
// the host ignores SIGCHLD (the system then keeps no status for anybody).
int run_command(const std::string& command);

// Runs a command and hands on its standard output line by line, without the line feeds; a line over kMaxLinePiece bytes
// comes in pieces. `on_started` is called once the command has been started, before the first line. Nothing is called when
// the command could not be started.
void read_command(const std::string& command, const std::function<void(std::string_view line)>& on_line,
                  const std::function<void()>& on_started = {});

}  // namespace olh

#endif
