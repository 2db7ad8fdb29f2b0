// A file below a documentation root, opened so that nothing else can be reached.
//
// Knows    that only regular files are read; that symbolic links are followed step by step, and that one which a stranger
//          made leads nowhere but below the root. What was checked is what is read: names are looked up once.
// Not      which names a request may hold (request_path).
// Owns     the descriptor of what was opened.
// For      page_server and page_changes.
#ifndef OLH_TOOLS_SERVE_ROOTED_FILE_H
#define OLH_TOOLS_SERVE_ROOTED_FILE_H

#include <sys/stat.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace olh_serve {

class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int fd) : fd_(fd) {}
  Descriptor(Descriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(fd_, other.fd_);
    return *this;
  }
  ~Descriptor();
  int get() const { return fd_; }
  bool is_open() const { return fd_ >= 0; }

 private:
  int fd_ = -1;
};

struct RootedFile {
  enum class Kind { kNothing, kFolder, kFile };
  Kind kind = Kind::kNothing;
  Descriptor descriptor;  // of a file: to read from; of a folder: its place only
  struct stat status = {};
};

RootedFile open_below(const std::string& root, const std::vector<std::string>& names);

// Bytes of an open file, fewer where it ends or cannot be read.
std::string bytes_of(const RootedFile& file, std::size_t offset, std::size_t most);

}  // namespace olh_serve

#endif
