#include "processes.h"

#include <dirent.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>

#include "files.h"

namespace olh_viewers {

namespace {

struct CloseDirectory {
  void operator()(DIR* stream) const noexcept { closedir(stream); }
};

constexpr std::size_t kLongestName = 15;  // the system cuts the names of processes

std::string text_of(const std::string& process, const char* file) {
  return content_of("/proc/" + process + "/" + file);
}

std::string_view field(std::string_view status, std::string_view name) {
  std::size_t begin = status.find(name);
  if (begin == std::string_view::npos) return {};
  begin += name.size();
  const std::size_t end = status.find_first_of("\t\n", begin);
  return status.substr(begin, end == std::string_view::npos ? end : end - begin);
}

// The name of a living process of this user; "" for any other.
std::string name_of(const std::string& process) {
  const std::string status = text_of(process, "status");
  if (field(status, "\nState:\t").starts_with('Z') || field(status, "\nUid:\t") != std::to_string(getuid()))
    return "";
  return std::string(field(status, "Name:\t"));
}

}  // namespace

bool is_process(int process, std::string_view name_begin) {
  return process > 0 && !name_begin.empty() && name_of(std::to_string(process)).starts_with(name_begin);
}

int process_named(std::string_view name) {
  const std::unique_ptr<DIR, CloseDirectory> processes(opendir("/proc"));
  if (processes == nullptr || name.empty()) return 0;
  name = name.substr(0, kLongestName);
  while (const dirent* entry = readdir(processes.get()))
    if (entry->d_name[0] >= '0' && entry->d_name[0] <= '9' && name_of(entry->d_name) == name)
      return std::atoi(entry->d_name);
  return 0;
}

std::string variable_of_process(int process, std::string_view name) {
  const std::string wanted = std::string(name) + "=";
  for (const std::string& entry : pieces_of(text_of(std::to_string(process), "environ"), '\0'))
    if (entry.starts_with(wanted)) return entry.substr(wanted.size());
  return "";
}

}  // namespace olh_viewers
