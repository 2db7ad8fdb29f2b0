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

constexpr std::size_t kRandomBytes = 16;

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

ServeState::ServeState(std::string& said) : directory_(session_directory(said)) {}

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
