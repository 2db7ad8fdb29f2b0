#include "source_tree.h"

#include <dirent.h>
#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <utility>

#include "refusal.h"
#include "words.h"

namespace olh_import {

namespace {

constexpr int kToRead = O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;

// Name by name and through no link, for systems that do not keep a name below a folder themselves.
int open_without_links(int folder, const std::string& name, int flags) {
  int at = dup(folder);
  for (std::size_t begin = 0; at >= 0;) {
    const std::size_t end = name.find('/', begin);
    const std::string part = name.substr(begin, end == std::string::npos ? end : end - begin);
    const bool is_last = end == std::string::npos;
    const int next =
        part == ".." ? -1 : openat(at, part.c_str(), (is_last ? flags : kToRead | O_DIRECTORY) | O_NOFOLLOW);
    close(at);
    if (is_last) return next;
    at = next;
    begin = end + 1;
  }
  return -1;
}

int open_below(int folder, const std::string& name, int flags) {
  open_how how = {};
  how.flags = static_cast<unsigned long long>(flags);
  how.resolve = RESOLVE_BENEATH | RESOLVE_NO_MAGICLINKS;
  const long fd = syscall(SYS_openat2, folder, name.c_str(), &how, sizeof how);
  if (fd < 0 && (errno == ENOSYS || errno == EPERM)) return open_without_links(folder, name, flags);
  return static_cast<int>(fd);
}

bool is_regular(int fd) {
  struct stat status = {};
  return fstat(fd, &status) == 0 && S_ISREG(status.st_mode);
}

// One walk over a folder.
struct Walk {
  int top;
  std::string folder;
  std::vector<std::string> names;
  std::vector<std::string> folders_to_do = {"."};
  std::vector<std::string> links_left_out = {};
  std::size_t bytes_of_names = 0;

  void take(const std::string& name, int directory, const dirent& entry) {
    struct stat status = {};
    if (fstatat(directory, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) != 0) return;
    if (S_ISDIR(status.st_mode)) folders_to_do.push_back(name);
    if (S_ISREG(status.st_mode)) names.push_back(name);
    if (S_ISLNK(status.st_mode)) take_link(name);
    bytes_of_names += name.size();
    if (names.size() + links_left_out.size() + folders_to_do.size() > kMostFiles || bytes_of_names > kMostFileNames)
      throw Refusal(kNoSource, folder + " holds too many files: more than " + std::to_string(kMostFiles) +
                                   ", or their names are too long.");
  }

  void take_link(const std::string& name) {
    const int fd = open_below(top, name, kToRead);
    const bool leads_to_file = fd >= 0 && is_regular(fd);
    if (fd >= 0) close(fd);
    (leads_to_file ? names : links_left_out).push_back(name);
  }

  void look_into(const std::string& below) {
    const int fd = open_below(top, below, kToRead | O_DIRECTORY);
    const std::unique_ptr<DIR, int (*)(DIR*)> stream(fd < 0 ? nullptr : fdopendir(fd), closedir);
    if (!stream) throw Refusal(kNoSource, folder + "/" + below + " cannot be listed: " + std::strerror(errno) + ".");
    const bool is_too_deep = static_cast<std::size_t>(std::ranges::count(below, '/')) + 1 >= kDeepestFolder;
    if (is_too_deep) throw Refusal(kNoSource, folder + " holds folders too deep in each other.");
    while (const dirent* const entry = readdir(stream.get()))
      if (entry->d_name[0] != '.') take(below == "." ? entry->d_name : below + "/" + entry->d_name, fd, *entry);
  }
};

}  // namespace

SourceTree::SourceTree(const std::string& folder)
    : folder_(folder), fd_(::open(folder.c_str(), kToRead | O_DIRECTORY)) {
  if (fd_ < 0) throw Refusal(kNoSource, folder + " cannot be read: " + std::strerror(errno) + ".");
  Walk walk = {fd_, folder, {}};
  try {
    while (!walk.folders_to_do.empty()) {
      const std::string next = std::move(walk.folders_to_do.back());
      walk.folders_to_do.pop_back();
      walk.look_into(next);
    }
  } catch (const Refusal&) {
    close(fd_);
    throw;
  }
  names_ = std::move(walk.names);
  std::ranges::sort(names_);
  links_left_out_ = std::move(walk.links_left_out);
  std::ranges::sort(links_left_out_);
}

SourceTree::~SourceTree() {
  if (fd_ >= 0) close(fd_);
}

void SourceTree::swap(SourceTree& other) noexcept {
  std::swap(folder_, other.folder_);
  std::swap(fd_, other.fd_);
  std::swap(names_, other.names_);
  std::swap(links_left_out_, other.links_left_out_);
}

bool SourceTree::has(std::string_view name) const { return std::ranges::binary_search(names_, name, std::less<>()); }

std::vector<std::string> SourceTree::ending_in(std::string_view end) const {
  std::vector<std::string> found;
  for (const std::string& name : names_)
    if (olh_viewers::lower_case(name).ends_with(end)) found.push_back(name);
  std::ranges::stable_sort(found, {}, [](const std::string& name) { return std::ranges::count(name, '/'); });
  return found;
}

int SourceTree::open(std::string_view name) const {
  const int fd = fd_ < 0 ? -1 : open_below(fd_, std::string(name), kToRead);
  if (fd < 0 || is_regular(fd)) return fd;
  close(fd);
  return -1;
}

// The bytes are counted as they come: a file may grow while it is read.
std::optional<std::string> SourceTree::read(std::string_view name, std::size_t most) const {
  const int fd = open(name);
  if (fd < 0) return std::nullopt;
  std::string text;
  char block[65536];
  ssize_t count = 0;
  do {
    count = ::read(fd, block, sizeof block);
    if (count > 0) text.append(block, static_cast<std::size_t>(count));
  } while ((count > 0 && text.size() <= most) || (count < 0 && errno == EINTR));
  close(fd);
  return count != 0 || text.size() > most ? std::nullopt : std::optional(std::move(text));
}

}  // namespace olh_import
