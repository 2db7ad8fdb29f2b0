#include "listing.h"

#include <algorithm>
#include <cstring>

namespace olh {

Listing::Listing(const std::string& path) : directory_(path.c_str()) {
  while (const char* name = directory_.next()) {
    const std::size_t size = std::strlen(name) + 1;
    char* const copy = static_cast<char*>(memory_.allocate(size, 1));
    std::memcpy(copy, name, size);
    files_.push_back({directory_.inode(), names_.size()});
    names_.push_back(copy);
  }
  std::sort(files_.begin(), files_.end(), [](const File& a, const File& b) { return a.inode < b.inode; });
}

}  // namespace olh
