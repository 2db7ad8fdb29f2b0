#include "running.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <optional>

#include "child.h"
#include "files.h"
#include "processes.h"
#include "viewer_environment.h"

namespace olh_viewers {

namespace {

// A ping answers at once: a bus that does not is left out. Before a page is given away there is more time.
constexpr int kMillisecondsForBus = 500;
constexpr int kMillisecondsBeforeHandOver = 1500;

// What a pattern of the table names: at most one part of it is "*", any name in that directory.
Words paths_of(const std::string& pattern) {
  constexpr std::string_view kSettings = "%c/";
  const std::string home = variable("HOME");
  const std::string own = variable("XDG_CONFIG_HOME");
  const std::string path = pattern.starts_with(kSettings) ? path_in(own.empty() ? path_in(home, ".config") : own,
                                                                    pattern.substr(kSettings.size()))
                                                          : path_in(home, pattern);
  const std::size_t star = path.find("/*/");
  if (star == std::string::npos) return {path};
  Words paths;
  std::error_code failed;
  for (std::filesystem::directory_iterator entry(path.substr(0, star), failed), end; !failed && entry != end;
       entry.increment(failed))
    paths.push_back(path_in(entry->path().string(), path.substr(star + 3)));
  return paths;
}

// The process at the end of a lock: "ADDRESS:+PROCESS", or "HOST-PROCESS" of this machine; 0 without one.
int process_of_lock(const std::string& lock) {
  std::error_code failed;
  const std::string text = std::filesystem::read_symlink(lock, failed).string();
  const std::size_t separator = failed ? std::string::npos : text.find_last_of("+-");
  if (separator == std::string::npos) return 0;
  char host[256] = "";
  gethostname(host, sizeof host - 1);
  if (text[separator] == '-' && text.substr(0, separator) != host) return 0;
  return std::atoi(text.c_str() + separator + 1);
}

int process_of_locks(const Traces& traces) {
  for (const std::string& pattern : traces.locks)
    for (const std::string& lock : paths_of(pattern))
      if (const int process = process_of_lock(lock); is_process(process, traces.process)) return process;
  return 0;
}

bool is_bus_name(std::string_view name, std::string_view wanted) {
  if (!name.starts_with(wanted)) return false;
  name.remove_prefix(wanted.size());
  return name.empty() || name[0] == '-' || name[0] == '.';
}

// Nothing when the bus cannot be asked.
std::optional<bool> is_on_bus(std::string_view wanted, int milliseconds) {
  if (wanted.empty() || !has_session_bus() || find_program("dbus-send").empty()) return std::nullopt;
  const std::optional<std::string> listing =
      output_of({"dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus", "/org/freedesktop/DBus",
                 "org.freedesktop.DBus.ListNames"},
                "", milliseconds);
  if (!listing) return std::nullopt;
  const Words pieces = pieces_of(*listing, '"');
  return std::any_of(pieces.begin(), pieces.end(),
                     [wanted](const std::string& piece) { return is_bus_name(piece, wanted); });
}

int process_of_running(const Program& program) {
  const Traces& traces = program.traces;
  if (!traces.locks.empty()) return process_of_locks(traces);
  return is_running(program) ? process_named(traces.process) : 0;
}

}  // namespace

bool is_running(const Program& program) {
  const Traces& traces = program.traces;
  if (!traces.locks.empty()) return process_of_locks(traces) != 0;
  return is_on_bus(traces.bus_name, kMillisecondsForBus).value_or(process_named(traces.process) != 0);
}

std::string objection_to_hand_over(const Program& program) {
  const int process = program.needs_session_bus ? process_of_running(program) : 0;
  if (process == 0) return "";
  const std::string bus = variable_of_process(process, kBusVariable);
  if (!bus.empty()) use_session_bus(bus);
  if (!has_session_bus()) return "it was started without a session bus";
  if (find_program("dbus-send").empty()) return "";  // nobody can tell
  const std::optional<bool> listens = is_on_bus(program.traces.bus_name, kMillisecondsBeforeHandOver);
  if (!listens) return "its session bus does not answer";
  return *listens ? "" : "it is not on the session bus";
}

std::string display_of_running(const Program& program) {
  const int process = process_of_running(program);
  return process == 0 ? "" : variable_of_process(process, "DISPLAY");
}

}  // namespace olh_viewers
