#include "files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <system_error>

#include "platform.h"
#include "words.h"

namespace olh_viewers {

namespace {

class Descriptor {
 public:
  // Of a regular file; nothing else is open.
  explicit Descriptor(const std::string& path)
      : fd_(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY)) {
    if (fd_ >= 0) is_open_ = fstat(fd_, &status_) == 0 && S_ISREG(status_.st_mode);
  }
  ~Descriptor() {
    if (fd_ >= 0) close(fd_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  bool is_within(std::size_t most) const { return is_open_ && size() <= most; }
  std::size_t size() const { return static_cast<std::size_t>(status_.st_size); }
  ssize_t read_some(char* block, std::size_t size) const {
    ssize_t count;
    do count = read(fd_, block, size);
    while (count < 0 && errno == EINTR);
    return count;
  }

 private:
  int fd_;
  bool is_open_ = false;
  struct stat status_ = {};
};

bool is_other_program(const std::string& path) {
  std::error_code failed;
  return access(path.c_str(), X_OK) == 0 && !std::filesystem::is_directory(path, failed) &&
         !std::filesystem::equivalent(path, this_program(), failed);
}

}  // namespace

// A file may grow while it is read, and those below /proc have no size: the bytes are counted as they come.
std::optional<std::string> text_of_file(const std::string& path, std::size_t most) {
  const Descriptor file(path);
  if (!file.is_within(most)) return std::nullopt;
  std::string text;
  text.reserve(file.size());
  char block[65536];
  for (;;) {
    const ssize_t count = file.read_some(block, sizeof block);
    if (count == 0) return text;
    if (count < 0 || text.size() + static_cast<std::size_t>(count) > most) return std::nullopt;
    text.append(block, static_cast<std::size_t>(count));
  }
}

std::string content_of(const std::string& path) { return text_of_file(path).value_or(""); }

bool is_readable_file(const std::string& path) { return Descriptor(path).is_within(kMostBytes); }

bool is_regular_file(const std::string& path) {
  return Descriptor(path).is_within(std::numeric_limits<std::size_t>::max());
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

std::string own_program() {
  std::error_code failed;
  const std::filesystem::path self = this_program();
  return std::filesystem::is_symlink(self, failed) ? std::filesystem::read_symlink(self, failed).string()
                                                   : std::filesystem::canonical(self, failed).string();
}

std::string find_beside(const std::string& name) {
  const std::string own = own_program();
  const std::string beside =
      own.empty() ? "" : find_program(std::filesystem::path(own).replace_filename(name).string());
  return beside.empty() ? find_program(name) : beside;
}

DirectoryNames names_in(const std::string& directory) {
  DirectoryNames found;
  std::error_code failed;
  for (std::filesystem::directory_iterator entry(directory, failed), end; !failed && entry != end;
       entry.increment(failed))
    found.names.push_back(entry->path().filename().string());
  const bool is_there = failed != std::errc::no_such_file_or_directory && failed != std::errc::not_a_directory;
  if (failed && is_there) found.why_not_all = failed.message();
  return found;
}

std::string path_in(const std::string& directory, const std::string& name) {
  return (std::filesystem::path(directory) / name).string();
}

std::string variable(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

}  // namespace olh_viewers
