#include "listing.h"

#include <algorithm>

#include "kept_text.h"

namespace olh {

Listing::Listing(const std::string& path) : directory_(path.c_str()) {
  while (const char* name = directory_.next()) {
    files_.push_back({directory_.inode(), names_.size()});
    names_.push_back(kept_text(memory_, name).data());
  }
  std::sort(files_.begin(), files_.end(), [](const File& a, const File& b) { return a.inode < b.inode; });
}

}  // namespace olh
