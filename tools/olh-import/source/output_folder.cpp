#include "output_folder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "manual_origin.h"
#include "refusal.h"

namespace olh_import {

namespace fs = std::filesystem;

namespace {

constexpr const char* kBefore = "before";  // in it: the manual that gives way, under its name

[[noreturn]] void refuse(const std::string& file) {
  throw Refusal(kCannotWrite, file + " cannot be written: " + std::strerror(errno) + ".");
}

// A file that is being written. One that is not finished goes with the folder that it is in.
class NewFile {
 public:
  explicit NewFile(const std::string& path)
      : path_(path), fd_(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0666)) {
    if (fd_ < 0) refuse(path_);
  }
  ~NewFile() {
    if (fd_ >= 0) close(fd_);
  }
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  void write_all(std::string_view bytes) {
    while (!bytes.empty()) {
      const ssize_t count = write(fd_, bytes.data(), bytes.size());
      if (count < 0 && errno != EINTR) refuse(path_);
      if (count > 0) bytes.remove_prefix(static_cast<std::size_t>(count));
    }
  }
  // Whether all could be read.
  bool copy_all(int from) {
    for (;;) {
      const ssize_t count = sendfile(fd_, from, nullptr, std::size_t{1} << 24);
      if (count == 0) return true;
      if (count < 0 && errno == EIO) return false;
      if (count < 0 && errno != EINTR) refuse(path_);
    }
  }
  void finish() {
    const int closed = close(fd_);
    fd_ = -1;
    if (closed != 0) refuse(path_);
  }

 private:
  std::string path_;
  int fd_;
};

// Only names that lead below, through nothing hidden.
bool is_harmless(std::string_view name) {
  for (std::size_t begin = 0; begin <= name.size();) {
    const std::size_t end = std::min(name.find('/', begin), name.size());
    if (end == begin || name[begin] == '.') return false;
    begin = end + 1;
  }
  return name.find('\0') == std::string_view::npos;
}

// A file below a directory, with the folders on the way to it.
std::string made_room_for(const fs::path& directory, std::string_view name) {
  const fs::path file = directory / name;
  std::error_code failed;
  fs::create_directories(file.parent_path(), failed);
  if (failed) throw Refusal(kCannotWrite, file.parent_path().string() + " cannot be made: " + failed.message() + ".");
  return file.string();
}

int locked(const std::string& directory) {
  const int fd = open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NOFOLLOW);
  if (fd < 0 || flock(fd, LOCK_EX | LOCK_NB) == 0) return fd;
  close(fd);
  return -1;
}

// A manual that was on its way out when an import ended goes back, unless there is one of its name.
void put_back(const fs::path& workshop, const fs::path& directory) {
  std::error_code ignored;
  for (const fs::directory_entry& manual : fs::directory_iterator(workshop / kBefore, ignored))
    fs::rename(manual.path(), directory / manual.path().filename(), ignored);
}

bool is_own(int fd) {
  struct stat status = {};
  return fstat(fd, &status) == 0 && status.st_uid == geteuid();
}

// What interrupted imports have left: nobody holds a lock on it. That of others may be a trap.
void clear_away_left_behind(const fs::path& directory) {
  std::error_code ignored;
  for (const fs::directory_entry& entry : fs::directory_iterator(directory, ignored)) {
    if (!entry.path().filename().string().starts_with(olh_viewers::kWorkshop)) continue;
    const int lock = locked(entry.path());
    if (lock < 0) continue;
    if (is_own(lock)) {
      put_back(entry.path(), directory);
      fs::remove_all(entry.path(), ignored);
    }
    close(lock);
  }
}

bool is_on_disk_of_its_own(const fs::path& directory) {
  struct stat own = {};
  struct stat above = {};
  return stat(directory.c_str(), &own) == 0 && stat(directory.parent_path().c_str(), &above) == 0 &&
         own.st_dev != above.st_dev;
}

// An empty directory of which a root is made stays so, since the root takes its place in one step; unless nothing above may be
// written, or can be moved there.
fs::path directory_for(const fs::path& place) {
  std::error_code failed;
  const fs::path root = place.parent_path().parent_path();
  fs::path directory = place.parent_path();
  while (directory != directory.root_path() && !fs::is_directory(directory, failed))
    directory = directory.parent_path();
  const bool can_give_way = directory == root && fs::is_empty(directory, failed) &&
                            !is_on_disk_of_its_own(directory) && access(directory.parent_path().c_str(), W_OK) == 0;
  return can_give_way ? directory.parent_path() : directory;
}

}  // namespace

NoSignals::NoSignals() {
  sigset_t all;
  sigfillset(&all);
  sigprocmask(SIG_SETMASK, &all, &before_);
}

NoSignals::~NoSignals() { sigprocmask(SIG_SETMASK, &before_, nullptr); }

NamelessFile::NamelessFile(const std::string& directory) : directory_(directory), file_(nullptr, std::fclose) {
  std::string name = directory + "/XXXXXX";
  const int fd = mkstemp(name.data());
  if (fd < 0) refuse(directory);
  unlink(name.c_str());
  file_.reset(fdopen(fd, "w+"));
  check(file_ != nullptr);
}

void NamelessFile::write(std::string_view bytes) {
  check(std::fwrite(bytes.data(), 1, bytes.size(), file_.get()) == bytes.size());
}

void NamelessFile::rewind() { check(std::fseek(file_.get(), 0, SEEK_SET) == 0); }

std::string NamelessFile::read(std::size_t size) {
  std::string bytes(size, '\0');
  check(std::fread(bytes.data(), 1, size, file_.get()) == size);
  return bytes;
}

void NamelessFile::check(bool is_done) const {
  if (!is_done) refuse(directory_);
}

OutputFolder::OutputFolder(const std::string& place) : place_(place) {
  const fs::path directory = directory_for(place);
  clear_away_left_behind(directory);
  // Another import could clear it away before the lock is there.
  for (int tries = 0; tries < 10 && lock_ < 0; ++tries) {
    if (!workshop_.empty()) rmdir(workshop_.c_str());
    workshop_ = (directory / (std::string(olh_viewers::kWorkshop) + "XXXXXX")).string();
    if (mkdtemp(workshop_.data()) == nullptr) refuse(directory.string());
    lock_ = locked(workshop_);
  }
  path_ = workshop_ + "/manual";
  if (mkdir(path_.c_str(), 0777) != 0) refuse(path_);
}

OutputFolder::~OutputFolder() {
  std::error_code ignored;
  fs::remove_all(workshop_, ignored);
  if (lock_ >= 0) close(lock_);
}

bool OutputFolder::write(std::string_view name, std::string_view bytes) const {
  if (!is_harmless(name)) return false;
  NewFile written(made_room_for(path_, name));
  written.write_all(bytes);
  written.finish();
  return true;
}

bool OutputFolder::write(std::string_view name, const std::function<std::optional<std::string>()>& next) const {
  if (!is_harmless(name)) return false;
  NewFile written(made_room_for(path_, name));
  while (const std::optional<std::string> piece = next()) written.write_all(*piece);
  written.finish();
  return true;
}

bool OutputFolder::write(std::string_view name, const std::function<void(std::FILE*)>& write) const {
  if (!is_harmless(name)) return false;
  const std::string path = made_room_for(path_, name);
  const int fd = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0666);
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(fd < 0 ? nullptr : fdopen(fd, "wb"), std::fclose);
  if (!file) refuse(path);
  write(file.get());
  if (std::fflush(file.get()) != 0 || std::ferror(file.get()) != 0 || std::fclose(file.release()) != 0) refuse(path);
  return true;
}

bool OutputFolder::copy(const SourceTree& from, const std::string& name, const std::string& to) const {
  const int fd = from.open(name);
  if (fd < 0 || !is_harmless(to)) return fd >= 0 && (close(fd), false);
  NewFile written(made_room_for(path_, to));
  const bool could_be_read = written.copy_all(fd);
  close(fd);
  written.finish();
  return could_be_read;
}

void OutputFolder::link(const std::string& target, const std::string& name) const {
  if (symlink(target.c_str(), (path_ + "/" + name).c_str()) != 0) refuse(path_ + "/" + name);
}

void OutputFolder::put(const std::string& name, const std::string& at) const {
  if (rename((path_ + "/" + name).c_str(), at.c_str()) != 0) refuse(at);
}

void OutputFolder::take_away(const std::string& at) const {
  if (rename(at.c_str(), (path_ + "/" + fs::path(at).filename().string()).c_str()) != 0) refuse(at);
}

// A file system that cannot exchange two folders has none at this place for a moment. No signal that can wait comes then;
// of an import that ends all the same, the next one puts back what was there.
void OutputFolder::take_place() {
  if (renameat2(AT_FDCWD, path_.c_str(), AT_FDCWD, place_.c_str(), RENAME_EXCHANGE) == 0) return;
  if (rename(path_.c_str(), place_.c_str()) == 0) return;
  const NoSignals uninterrupted;
  const std::string room = workshop_ + "/" + kBefore;
  const std::string before = room + "/" + fs::path(place_).filename().string();
  if (mkdir(room.c_str(), 0700) != 0 || rename(place_.c_str(), before.c_str()) != 0) refuse(place_);
  if (rename(path_.c_str(), place_.c_str()) == 0) return;
  const Refusal failure(kCannotWrite, place_ + " cannot be replaced: " + std::strerror(errno) + ".");
  put_back(workshop_, fs::path(place_).parent_path());
  throw failure;
}

}  // namespace olh_import
