#include "generated_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "exclusive_file.h"
#include "file_replacement.h"
#include "olh/dmerge.h"
#include "regular_file.h"
#include "retry.h"
#include "write_signals.h"

namespace olh {

namespace {

constexpr auto kLink = FileReplacement::StrangersLink::kGivesWay;

// Asked for the user whose rights a write will have.
bool may(const std::string& path, int what) noexcept {
  return faccessat(AT_FDCWD, path.c_str(), what, AT_EACCESS) == 0;
}

// Gives a file that holds just this text a new date. What a stranger's link leads to is not looked at.
bool renew(const std::string& path, std::string_view text) {
  const RegularFile file = open_regular_file(FileReplacement::target_of(path).c_str(), AT_FDCWD, O_NOFOLLOW);
  if (!file || file.size != text.size()) return false;
  char block[8 * 1024];
  while (!text.empty()) {
    const ssize_t got = retry_interrupted([&] { return ::read(file.descriptor.get(), block, sizeof block); });
    if (got <= 0 || !text.starts_with(std::string_view(block, static_cast<std::size_t>(got)))) return false;
    text.remove_prefix(static_cast<std::size_t>(got));
  }
  return futimens(file.descriptor.get(), nullptr) == 0;
}

bool may_create_beside(const std::string& file) { return may(file.substr(0, file.rfind('/') + 1), W_OK | X_OK); }

// A list can be made again, so nobody waits for the disk. It takes the place of a link that a stranger has put there.
// Returns 0, or why the list is as it was.
int replace(const std::string& path, std::string_view text) {
  errno = 0;
  FileReplacement file(path, FileReplacement::Durability::kCached, kLink);
  file.write(text);
  if (file.commit()) return 0;
  return errno == 0 ? EIO : errno;
}

// Whether the directory has refused the new file or the exchange: nothing may be created there, the old file is
// somebody else's in a sticky directory, or it is mounted by itself.
bool is_refused_by_directory(int error) noexcept {
  return error == EACCES || error == EPERM || error == EBUSY || error == EROFS;
}

// Whether the disk has room for a file of this size, as far as the file system tells. The file keeps its text and size.
bool reserve(int file, off_t size) noexcept {
  struct stat old = {};
  if (fstat(file, &old) != 0) return false;
  if (size == 0 || retry_interrupted([&] { return fallocate(file, FALLOC_FL_KEEP_SIZE, 0, size); }) == 0) return true;
  if (errno == EOPNOTSUPP || errno == ENOSYS) return true;
  [[maybe_unused]] const int given_back = ftruncate(file, old.st_size);  // the part that was reserved
  return false;
}

// For a directory that refuses a new file. Room is asked for first: what broke off half way could not be undone.
bool write_in_place(const std::string& path, std::string_view text) {
  const WriteSignalsHeldBack quiet;
  UniqueFd file = open_exclusively(path);
  const auto size = static_cast<off_t>(text.size());
  if (!file || !reserve(file.get(), size)) return false;
  while (!text.empty()) {
    const ssize_t put = retry_interrupted([&] { return ::write(file.get(), text.data(), text.size()); });
    if (put <= 0) return false;
    text.remove_prefix(static_cast<std::size_t>(put));
  }
  return ftruncate(file.get(), size) == 0 && file.close();
}

}  // namespace

bool can_be_written(const std::string& path) {
  const std::string target = FileReplacement::target_of(path);
  switch (FileReplacement::former_at(target, kLink)) {
    case FileReplacement::Former::kFile:
      return may(target, W_OK);
    case FileReplacement::Former::kNone:
      return may_create_beside(target);
    default:
      return false;
  }
}

bool store_list(const std::string& path, std::string_view text) {
  if (!can_be_written(path)) return false;
  if (renew(path, text)) return true;
  const int error = replace(path, text);
  return error == 0 || (is_refused_by_directory(error) && write_in_place(path, text));
}

bool put_list(std::string path, std::string_view text) {
  const bool is_stored = store_list(path, text);
  if (is_stored) registerNewFile(path.data());
  return is_stored;
}

}  // namespace olh
