#include "generated_file.h"

#include <unistd.h>

#include <utility>

#include "olh/dmerge.h"
#include "retry.h"

namespace olh {

namespace {

// A list can be made again, so nobody waits for the disk.
constexpr auto kDurability = FileReplacement::Durability::kCached;

// Whether a file holds just this, from where it is read to its end.
bool holds(const RegularFile& file, std::string_view text) noexcept {
  if (!file || file.size != text.size()) return false;
  char block[16 * 1024];
  while (!text.empty()) {
    const ssize_t got = retry_interrupted([&] { return ::read(file.descriptor.get(), block, sizeof block); });
    if (got <= 0 || !text.starts_with(std::string_view(block, static_cast<std::size_t>(got)))) return false;
    text.remove_prefix(static_cast<std::size_t>(got));
  }
  return true;
}

}  // namespace

GeneratedFile::GeneratedFile(std::string path) : path_(std::move(path)), old_(open_regular_file(path_.c_str())) {
  if (!old_) replacement_.emplace(path_, kDurability);
}

GeneratedFile::operator bool() const noexcept {
  if (replacement_ && !*replacement_) return false;
  return access(path_.c_str(), F_OK) != 0 || access(path_.c_str(), W_OK) == 0;
}

bool GeneratedFile::finish(std::string_view text) {
  if (!holds(old_, text) && !replace(text)) return false;
  registerNewFile(path_.data());
  return true;
}

bool GeneratedFile::replace(std::string_view text) {
  if (!replacement_) replacement_.emplace(path_, kDurability);
  replacement_->write(text);
  if (replacement_->commit()) return true;
  unlink(replacement_->temporary_name().c_str());
  return false;
}

}  // namespace olh
