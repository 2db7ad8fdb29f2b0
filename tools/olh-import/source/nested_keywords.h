// Keywords in keywords, as indexes have them: each is called after those that it lies in, "printing, paper".
//
// For      the readers.
#ifndef OLH_IMPORT_NESTED_KEYWORDS_H
#define OLH_IMPORT_NESTED_KEYWORDS_H

#include <string>
#include <vector>

#include "bounds.h"

namespace olh_import {

class NestedKeywords {
 public:
  // The name of the next keyword, which lies in `depth` others. One that is too long for a topic stays so, and is cut.
  const std::string& next(int depth, const std::string& word) {
    if (static_cast<std::size_t>(depth) < names_.size()) names_.resize(static_cast<std::size_t>(depth));
    std::string name = (names_.empty() ? "" : names_.back() + ", ") + word;
    if (name.size() > kLongestName) name.resize(kLongestName + 1);
    return names_.emplace_back(std::move(name));
  }

 private:
  std::vector<std::string> names_;
};

}  // namespace olh_import

#endif
