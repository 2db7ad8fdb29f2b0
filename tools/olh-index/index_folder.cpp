#include "index_folder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

#include "index_pieces.h"

namespace olh_index {

namespace fs = std::filesystem;

namespace {

constexpr const char* kMaking = "making-XXXXXX";
constexpr std::size_t kBytesAtOnce = std::size_t{1024} * 1024;

[[noreturn]] void fail(const fs::path& path) {
  throw fs::filesystem_error("", path, std::error_code(errno, std::generic_category()));
}

// A file that was not there before.
void write_new(const fs::path& path, std::string_view text) {
  constexpr mode_t kForAll = 0644;
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, kForAll);
  if (file < 0) fail(path);
  bool is_good = true;
  while (is_good && !text.empty()) {
    const ssize_t written = ::write(file, text.data(), text.size());
    if (written > 0) text.remove_prefix(static_cast<std::size_t>(written));
    is_good = written > 0 || errno == EINTR;
  }
  const int error = errno;
  const bool is_closed = close(file) == 0;
  if (is_good && !is_closed) fail(path);
  if (is_good) return;
  errno = error;
  fail(path);
}

std::string dumped(const nlohmann::json& head) {
  return head.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

}  // namespace

IndexFolder::IndexFolder(const fs::path& root) : folder_(root / olh_search::kIndexFolder) {
  fs::create_directories(folder_);
  lock_ = open(folder_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (lock_ < 0) fail(folder_);
  flock(lock_, LOCK_EX);  // a file system without locks has none to wait for
  std::string pattern = (folder_ / kMaking).string();
  if (mkdtemp(pattern.data()) == nullptr) fail(folder_);
  making_ = pattern;
  fs::permissions(making_, fs::perms::owner_all | fs::perms::group_read | fs::perms::group_exec |
                               fs::perms::others_read | fs::perms::others_exec);
}

IndexFolder::~IndexFolder() {
  if (writing_.valid()) writing_.wait();
  std::error_code ignored;
  fs::remove_all(making_, ignored);
  close(lock_);
}

void IndexFolder::write(const std::string& piece, std::string_view value) {
  waiting_.emplace_back(piece, olh_search::script_of_piece(piece, value));
  bytes_waiting_ += value.size();
  if (bytes_waiting_ > kBytesAtOnce) begin_writing();
}

void IndexFolder::begin_writing() {
  if (writing_.valid()) writing_.get();
  writing_ = std::async(std::launch::async, [this, pieces = std::move(waiting_)] {
    for (const auto& [name, script] : pieces) {
      write_new(making_ / (name + ".js"), script);
      sum_.add(script);
    }
  });
  waiting_.clear();
  bytes_waiting_ = 0;
}

void IndexFolder::finish(nlohmann::json head) {
  begin_writing();
  writing_.get();
  const std::string name = sum_.name();
  head["folder"] = name;
  write_new(making_ / "head.js", olh_search::script_of_piece("head", dumped(head)));
  fs::rename(making_ / "head.js", folder_ / "head.js.new");
  std::error_code failed;
  fs::rename(making_, folder_ / name, failed);  // it is there already when nothing has changed
  if (failed && !fs::is_directory(folder_ / name)) throw fs::filesystem_error("", folder_ / name, failed);
  fs::rename(folder_ / "head.js.new", folder_ / "head.js");
  // Old ones, and what is left of runs that were killed.
  for (const fs::directory_entry& entry : fs::directory_iterator(folder_))
    if (entry.symlink_status().type() == fs::file_type::directory && entry.path().filename() != name)
      fs::remove_all(entry.path(), failed);
}

}  // namespace olh_index
