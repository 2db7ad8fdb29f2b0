#include "running.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <memory>
#include <string>

namespace olh_viewers {

namespace {

struct CloseDirectory {
  void operator()(DIR* stream) const noexcept { closedir(stream); }
};

constexpr std::size_t kLongestName = 15;  // the system cuts the names of processes

// The head of a process's status: name, state and owner stand in it.
std::string status_of(const char* process) {
  const std::string path = std::string("/proc/") + process + "/status";
  const int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return "";
  char text[1024];
  const ssize_t count = read(fd, text, sizeof text);
  close(fd);
  return count > 0 ? std::string(text, static_cast<std::size_t>(count)) : "";
}

std::string_view field(std::string_view status, std::string_view name) {
  std::size_t begin = status.find(name);
  if (begin == std::string_view::npos) return {};
  begin += name.size();
  const std::size_t end = status.find_first_of("\t\n", begin);
  return status.substr(begin, end == std::string_view::npos ? end : end - begin);
}

}  // namespace

bool is_running(std::string_view process) {
  const std::unique_ptr<DIR, CloseDirectory> processes(opendir("/proc"));
  if (processes == nullptr || process.empty()) return false;
  const std::string name(process.substr(0, kLongestName));
  const std::string user = std::to_string(getuid());
  while (const dirent* entry = readdir(processes.get())) {
    if (entry->d_name[0] < '0' || entry->d_name[0] > '9') continue;
    const std::string status = status_of(entry->d_name);
    const bool is_dead = field(status, "State:\t").starts_with('Z');
    if (field(status, "Name:\t") == name && field(status, "\nUid:\t") == user && !is_dead) return true;
  }
  return false;
}

}  // namespace olh_viewers
