// Files that belong to this user's session alone.
//
// Knows    where they lie: a directory that nobody else may enter, which goes with the session where the system has one so.
// For      serve_state, and olh, which keeps the results of a search.
#ifndef OLH_TOOLS_VIEWERS_SESSION_FILES_H
#define OLH_TOOLS_VIEWERS_SESSION_FILES_H

#include <string>
#include <utility>

namespace olh_viewers {

// "olh" in the directory for this session's files, else "/tmp/olh-UID"; made if need be. "" when it is not a directory of this
// user alone, and `said` is then that.
std::string session_directory(std::string& said);

// A descriptor of a file there, for this user alone where it is made; never through a link. -1 on failure.
int open_own(const std::string& path, int flags);

// An open file with a lock, which ends with this.
class LockedFile {
 public:
  LockedFile() = default;
  // Waits so long for the lock. A file that is not there is made, for this user alone.
  LockedFile(const std::string& path, int milliseconds);
  LockedFile(LockedFile&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
  LockedFile& operator=(LockedFile&& other) noexcept {
    std::swap(fd_, other.fd_);
    return *this;
  }
  ~LockedFile();
  explicit operator bool() const { return fd_ >= 0; }
  // Whether the file is still the one under that name.
  bool is_at(const std::string& path) const;
  bool write(const std::string& text) const;

 private:
  int fd_ = -1;
};

}  // namespace olh_viewers

#endif
