#include "listing.h"

#include <algorithm>
#include <cstring>
#include <numeric>

namespace olh {

Listing::Listing(const std::string& path) : directory_(path.c_str()) {
  while (const char* name = directory_.next()) {
    const std::size_t size = std::strlen(name) + 1;
    char* const copy = static_cast<char*>(memory_.allocate(size, 1));
    std::memcpy(copy, name, size);
    names_.push_back(copy);
    inodes_.push_back(directory_.inode());
  }
}

std::vector<std::size_t> Listing::disk_order() const {
  std::vector<std::size_t> order(names_.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::sort(order.begin(), order.end(), [this](std::size_t a, std::size_t b) { return inodes_[a] < inodes_[b]; });
  return order;
}

}  // namespace olh
