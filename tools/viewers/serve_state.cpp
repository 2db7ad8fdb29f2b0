#include "serve_state.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <ctime>

#include "files.h"
#include "words.h"

namespace olh_viewers {

namespace {

constexpr const char* kLock = "serve.lock";
constexpr const char* kState = "serve.state";
constexpr const char* kNewState = "serve.state.new";
constexpr const char* kRoots = "serve.roots";

constexpr mode_t kOwnDirectory = 0700;
constexpr mode_t kOwnFile = 0600;
constexpr std::size_t kRandomBytes = 16;

bool belongs_to_user_alone(const std::string& directory) {
  struct stat status = {};
  return lstat(directory.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == geteuid() &&
         (status.st_mode & 077U) == 0;
}

// The directory for the files of this session; "" without one that can be trusted.
std::string session_directory() {
  for (const std::string& directory : {variable("XDG_RUNTIME_DIR"), "/run/user/" + std::to_string(geteuid())})
    if (directory.starts_with('/') && belongs_to_user_alone(directory)) return directory;
  return "";
}

int open_own(const std::string& path, int flags) {
  return open(path.c_str(), flags | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, kOwnFile);
}

bool wait_for_lock(int fd, int milliseconds) {
  constexpr timespec kPause = {0, 5000000};
  for (int left = milliseconds; flock(fd, LOCK_EX | LOCK_NB) != 0; left -= 5) {
    if (errno != EWOULDBLOCK && errno != EINTR) return false;
    if (left <= 0) return false;
    nanosleep(&kPause, nullptr);
  }
  return true;
}

}  // namespace

std::string new_token() {
  std::array<unsigned char, kRandomBytes> bytes{};
  if (getentropy(bytes.data(), bytes.size()) != 0) return "";
  std::string token;
  for (const unsigned char byte : bytes) {
    std::array<char, 3> text{};
    std::snprintf(text.data(), text.size(), "%02x", byte);
    token += text.data();
  }
  return token;
}

LockedFile::LockedFile(const std::string& path, int milliseconds) : fd_(open_own(path, O_RDWR | O_CREAT)) {
  if (fd_ < 0 || wait_for_lock(fd_, milliseconds)) return;
  close(fd_);
  fd_ = -1;
}

LockedFile::~LockedFile() {
  if (fd_ >= 0) close(fd_);
}

bool LockedFile::is_at(const std::string& path) const {
  struct stat own = {};
  struct stat there = {};
  return fstat(fd_, &own) == 0 && lstat(path.c_str(), &there) == 0 && own.st_dev == there.st_dev &&
         own.st_ino == there.st_ino;
}

bool LockedFile::write(const std::string& text) const {
  return ftruncate(fd_, 0) == 0 && pwrite(fd_, text.data(), text.size(), 0) == static_cast<ssize_t>(text.size());
}

ServeState::ServeState(std::string& said) {
  const std::string session = session_directory();
  const std::string directory = session.empty() ? "/tmp/olh-" + std::to_string(geteuid()) : path_in(session, "olh");
  mkdir(directory.c_str(), kOwnDirectory);
  if (belongs_to_user_alone(directory)) directory_ = directory;
  if (!*this) said = directory + " is not a directory of this user alone";
}

LockedFile ServeState::lock(int milliseconds) const { return LockedFile(path_of(kLock), milliseconds); }

std::string ServeState::address() const {
  const std::string path = path_of(kState);
  const int fd = open_own(path, O_RDONLY);
  if (fd < 0) return "";
  const bool is_held = flock(fd, LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK;
  close(fd);
  return is_held ? content_of(path) : "";
}

std::vector<ServedRoot> ServeState::roots() const {
  std::vector<ServedRoot> roots;
  for (const std::string& line : pieces_of(content_of(path_of(kRoots)), '\n'))
    if (const std::size_t blank = line.find(' '); blank != std::string::npos)
      roots.push_back({line.substr(0, blank), line.substr(blank + 1)});
  return roots;
}

std::string ServeState::token_of(const std::string& root) const {
  const int fd = open_own(path_of(kRoots), O_WRONLY | O_APPEND | O_CREAT);
  if (fd < 0) return "";
  futimens(fd, nullptr);  // the server sees that it is needed
  std::string token;
  for (const ServedRoot& known : roots())
    if (known.path == root) token = known.token;
  if (token.empty() && root.find('\n') == std::string::npos) {
    token = new_token();
    const std::string line = token + " " + root + "\n";
    if (!token.empty() && ::write(fd, line.data(), line.size()) != static_cast<ssize_t>(line.size())) token.clear();
  }
  close(fd);
  return token;
}

LockedFile ServeState::announce(const std::string& address) const {
  const std::string path = path_of(kNewState);
  unlink(path.c_str());
  unlink(path_of(kRoots).c_str());
  LockedFile state(path, 0);
  if (state && state.write(address) && rename(path.c_str(), path_of(kState).c_str()) == 0) return state;
  return {};
}

bool ServeState::is_announced(const LockedFile& announced) const { return announced.is_at(path_of(kState)); }

long ServeState::seconds_since_use() const {
  struct stat status = {};
  return stat(path_of(kRoots).c_str(), &status) == 0 ? std::time(nullptr) - status.st_mtime : 0;
}

void ServeState::withdraw() const {
  unlink(path_of(kState).c_str());
  unlink(path_of(kRoots).c_str());
}

std::string ServeState::path_of(const char* name) const { return path_in(directory_, name); }

}  // namespace olh_viewers
