#include "running.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <optional>
#include <thread>

#include "child.h"
#include "files.h"
#include "viewer_environment.h"

namespace olh_viewers {

namespace {

// A ping answers at once: a bus that does not is left out. Before a page is given away there is more time.
constexpr int kMillisecondsForBus = 500;
constexpr int kMillisecondsBeforeHandOver = 1500;
constexpr std::chrono::seconds kLongestStart(10);
constexpr std::chrono::seconds kLongestToLock(4);

// ---- the processes of this user, as the system shows them below /proc ----

std::string_view field(std::string_view status, std::string_view name) {
  const std::size_t begin = status.find(name);
  if (begin == std::string_view::npos) return {};
  status.remove_prefix(begin + name.size());
  return status.substr(0, status.find_first_of("\t\n"));
}

// The name of a living process of this user; "" for any other. One that has ended and was not collected yet is none.
std::string name_of(int process) {
  const std::string status = content_of("/proc/" + std::to_string(process) + "/status");
  if (field(status, "\nState:\t").starts_with('Z') || field(status, "\nUid:\t") != std::to_string(getuid()))
    return "";
  return std::string(field(status, "Name:\t"));
}

// The number of a process with exactly that name; 0 when there is none, and for "".
int process_named(std::string_view name) {
  constexpr std::size_t kLongestName = 15;  // the system cuts the names of processes
  if (name.empty()) return 0;
  for (const std::string& entry : names_in("/proc").names)
    if (const int process = std::atoi(entry.c_str()); process > 0)
      if (name_of(process) == name.substr(0, kLongestName)) return process;
  return 0;
}

// The seconds since the process was started; 0 when that cannot be told.
double age_of(int process) {
  constexpr std::size_t kStart = 20;  // behind the name, counted in ticks since the system has run
  const std::string status = content_of("/proc/" + std::to_string(process) + "/stat");
  const Words fields = pieces_of(status.substr(std::min(status.size(), status.rfind(')'))), ' ');
  if (fields.size() <= kStart) return 0;
  const double since_boot = std::strtod(content_of("/proc/uptime").c_str(), nullptr);
  return since_boot - std::strtod(fields[kStart].c_str(), nullptr) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

// A variable that the process was started with; "" when it was not, or when that cannot be read.
std::string variable_of_process(int process, std::string_view name) {
  const std::string wanted = std::string(name) + "=";
  for (const std::string& entry : pieces_of(content_of("/proc/" + std::to_string(process) + "/environ"), '\0'))
    if (entry.starts_with(wanted)) return entry.substr(wanted.size());
  return "";
}

// ---- the locks of browsers ----

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
  for (const std::string& name : names_in(path.substr(0, star)).names)
    paths.push_back(path.substr(0, star + 1) + name + path.substr(star + 2));
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

// A lock that a living process holds, and that process.
struct HeldLock {
  std::string path;
  int process = 0;  // 0: there is none
};

HeldLock held_lock(const Traces& traces) {
  for (const std::string& pattern : traces.locks)
    for (const std::string& lock : paths_of(pattern))
      if (const int process = process_of_lock(lock); process > 0 && name_of(process).starts_with(traces.process))
        return {lock, process};
  return {};
}

int process_of_locks(const Traces& traces) { return held_lock(traces).process; }

// One that was started just now and takes its lock in a moment: another would find the profile taken, and the page would be lost.
bool is_about_to_lock(const Traces& traces) {
  const Words processes = names_in("/proc").names;
  return std::any_of(processes.begin(), processes.end(), [&traces](const std::string& entry) {
    const int process = std::atoi(entry.c_str());
    return process > 0 && name_of(process).starts_with(traces.process) &&
           age_of(process) < static_cast<double>(kLongestToLock.count());
  });
}

void await_lock(const Traces& traces) {
  const auto end = std::chrono::steady_clock::now() + kLongestToLock;
  while (process_of_locks(traces) == 0 && is_about_to_lock(traces) && std::chrono::steady_clock::now() < end)
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
}

// Whether the Firefox with that lock has no window yet: a page that it is given then is lost. It writes down beside its lock
// how far it has come; what stands there from its last run is older than the lock, and a new profile has nothing there at first.
bool is_starting(const std::string& lock) {
  const std::string progress = lock.substr(0, lock.find_last_of('/') + 1) + "sessionCheckpoints.json";
  struct stat locked = {};
  struct stat written = {};
  if (lstat(lock.c_str(), &locked) != 0) return false;
  if (stat(progress.c_str(), &written) != 0) return std::time(nullptr) - locked.st_mtime < kLongestStart.count();
  return written.st_mtime < locked.st_mtime ||
         content_of(progress).find("\"sessionstore-windows-restored\":true") == std::string::npos;
}

// Whether it has come so far in time.
bool ends_starting(const std::string& lock) {
  const auto end = std::chrono::steady_clock::now() + kLongestStart;
  while (is_starting(lock)) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  return true;
}

// ---- the session bus ----

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
  if (!program.needs_session_bus) return "";
  await_lock(program.traces);
  const int process = process_of_running(program);
  if (process == 0) return "";
  if (const HeldLock lock = held_lock(program.traces); lock.process != 0 && !ends_starting(lock.path))
    return "it has not finished starting";
  const std::string bus = variable_of_process(process, kBusVariable);
  if (!bus.empty()) use_session_bus(bus);
  if (!has_session_bus()) return "it was started without a session bus";
  if (find_program("dbus-send").empty()) return "";  // nobody can tell
  const std::optional<bool> listens = is_on_bus(program.traces.bus_name, kMillisecondsBeforeHandOver);
  if (!listens) return "its session bus does not answer";
  return *listens ? "" : "it is not on the session bus";
}

std::string variable_of_running(const Program& program, std::string_view name) {
  const int process = process_of_running(program);
  return process == 0 ? "" : variable_of_process(process, name);
}

}  // namespace olh_viewers
