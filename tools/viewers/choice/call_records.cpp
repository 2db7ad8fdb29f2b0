#include "call_records.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <sstream>

#include "files.h"

namespace olh_viewers {

namespace {

std::string open_descriptors() {
  std::string list;
  DIR* directory = opendir("/proc/self/fd");
  if (directory == nullptr) return "unknown";
  while (const dirent* entry = readdir(directory)) {
    const int fd = std::atoi(entry->d_name);
    if (entry->d_name[0] != '.' && fd > 2 && fd != dirfd(directory)) list += std::string(entry->d_name) + " ";
  }
  closedir(directory);
  return list;
}

std::string status_line(const std::string& name) {
  std::istringstream status(content_of("/proc/self/status"));
  for (std::string line; std::getline(status, line);)
    if (line.rfind(name + ":", 0) == 0) return line.substr(line.find_first_not_of(" \t", name.size() + 1));
  return "";
}

// Takes the field at `position` and goes behind it. Returns false when it has no end yet.
bool next_field(const std::string& log, std::size_t& position, std::string& field) {
  const std::size_t end = log.find('\0', position);
  if (end == std::string::npos) return false;
  field = log.substr(position, end - position);
  position = end + 1;
  return true;
}

bool next_call(const std::string& log, std::size_t& position, Call& call) {
  std::string count;
  if (!next_field(log, position, count)) return false;
  call.arguments.clear();
  for (unsigned long left = std::strtoul(count.c_str(), nullptr, 10); left > 0; --left)  // no more than there are
    if (!next_field(log, position, call.arguments.emplace_back())) return false;
  return next_field(log, position, call.open_descriptors) && next_field(log, position, call.ignored_signals) &&
         next_field(log, position, call.blocked_signals);
}

}  // namespace

Call this_call(int argc, char** argv) {
  return {.arguments = std::vector<std::string>(argv + 1, argv + argc),
          .open_descriptors = open_descriptors(),
          .ignored_signals = status_line("SigIgn"),
          .blocked_signals = status_line("SigBlk")};
}

bool append_call(const std::string& file, const Call& call, bool may_make_file) {
  std::string record = std::to_string(call.arguments.size()) + '\0';
  for (const std::string& argument : call.arguments) record += argument + '\0';
  for (const std::string* field : {&call.open_descriptors, &call.ignored_signals, &call.blocked_signals})
    record += *field + '\0';
  const int log = open(file.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC | (may_make_file ? O_CREAT : 0), 0600);
  if (log < 0) return false;
  const bool written = write(log, record.data(), record.size()) == static_cast<ssize_t>(record.size());
  return close(log) == 0 && written;
}

std::vector<Call> read_calls(const std::string& file) {
  const std::string log = content_of(file);
  std::vector<Call> calls;
  Call call;
  for (std::size_t position = 0; next_call(log, position, call);) calls.push_back(call);
  return calls;
}

}  // namespace olh_viewers
