#include "files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

namespace olh_viewers {

namespace {

constexpr off_t kMostBytes = 16 * 1024 * 1024;

// The descriptor of a regular file of a size to be read; below 0 otherwise.
int open_regular(const std::string& path) {
  const int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
  struct stat status = {};
  if (fd < 0) return fd;
  if (fstat(fd, &status) == 0 && S_ISREG(status.st_mode) && status.st_size <= kMostBytes) return fd;
  close(fd);
  return -1;
}

bool is_other_program(const std::string& path) {
  struct stat status = {};
  struct stat own = {};
  if (access(path.c_str(), X_OK) != 0 || stat(path.c_str(), &status) != 0 || S_ISDIR(status.st_mode)) return false;
  const bool is_own = stat("/proc/self/exe", &own) == 0 && own.st_dev == status.st_dev && own.st_ino == status.st_ino;
  return !is_own;
}

}  // namespace

std::string content_of(const std::string& path) {
  const int fd = open_regular(path);
  if (fd < 0) return "";
  std::string text;
  char block[65536];
  for (ssize_t count = read(fd, block, sizeof block); count > 0; count = read(fd, block, sizeof block))
    text.append(block, static_cast<std::size_t>(count));
  close(fd);
  return text;
}

bool is_readable_file(const std::string& path) {
  const int fd = open_regular(path);
  if (fd >= 0) close(fd);
  return fd >= 0;
}

std::string find_program(const std::string& name) {
  if (name.find('/') != std::string::npos) return is_other_program(name) ? name : "";
  if (name.empty()) return "";
  for (const std::string& directory : pieces_of(variable("PATH"), ':')) {
    std::string candidate = path_in(directory, name);
    if (is_other_program(candidate)) return candidate;
  }
  return "";
}

std::string path_in(const std::string& directory, const std::string& name) {
  return (std::filesystem::path(directory) / name).string();
}

Words pieces_of(std::string_view list, char separator) {
  Words pieces;
  while (!list.empty()) {
    const std::size_t end = list.find(separator);
    if (end != 0) pieces.emplace_back(list.substr(0, end));
    if (end == std::string_view::npos) break;
    list.remove_prefix(end + 1);
  }
  return pieces;
}

std::string variable(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

}  // namespace olh_viewers
