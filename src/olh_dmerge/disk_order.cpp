#include "disk_order.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace olh {

DiskOrder::DiskOrder(const std::string& path) : directory_(path.c_str()) {
  std::vector<std::pair<ino_t, const char*>> entries;
  while (const char* name = directory_.next()) {
    const std::size_t size = std::strlen(name) + 1;
    char* const copy = static_cast<char*>(memory_.allocate(size, 1));
    std::memcpy(copy, name, size);
    entries.emplace_back(directory_.inode(), copy);
  }
  std::sort(entries.begin(), entries.end());
  for (const auto& [inode, name] : entries) names_.push_back(name);
}

}  // namespace olh
