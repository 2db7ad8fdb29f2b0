#include "regular_file.h"

#include <sys/stat.h>

namespace olh {

RegularFile open_regular_file(const char* path, int directory, int further_flags) noexcept {
  UniqueFd file(::openat(directory, path, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY | further_flags));
  struct stat status = {};
  if (!file || fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) return {};
  return {std::move(file), static_cast<std::uint64_t>(status.st_size)};
}

}  // namespace olh
