// The files below one folder of a source, the only way in which readers get at them.
//
// Knows    that hidden files are none of its files, and that no link leads out of the folder: the system itself keeps
//          every name that is opened below it.
// Not      what the files are.
// Owns     the descriptor of the folder.
// For      the readers, import_manual.
#ifndef OLH_IMPORT_SOURCE_TREE_H
#define OLH_IMPORT_SOURCE_TREE_H

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "bounds.h"

namespace olh_import {

class SourceTree {
 public:
  // No file at all.
  SourceTree() = default;
  // Lists the folder; throws a Refusal when it cannot be listed, or holds too much.
  explicit SourceTree(const std::string& folder);
  SourceTree(SourceTree&& other) noexcept { swap(other); }
  SourceTree& operator=(SourceTree&& other) noexcept { return swap(other), *this; }
  ~SourceTree();

  const std::string& folder() const { return folder_; }
  // The regular files by their names below the folder ("library/json.html"), in the order of their bytes.
  const std::vector<std::string>& names() const { return names_; }
  bool has(std::string_view name) const;
  // Those whose names end so, in any case of letters (".hhp"). What lies nearest to the folder itself comes first.
  std::vector<std::string> ending_in(std::string_view end) const;
  // Only these of them from now on.
  void keep(const std::function<bool(const std::string& name)>& is_wanted) {
    std::erase_if(names_, [&](const std::string& name) { return !is_wanted(name); });
  }
  // Links that lead out of the folder, or to other folders: they are no files of it.
  const std::vector<std::string>& links_left_out() const { return links_left_out_; }

  // The bytes of a file; nothing when it has more than `most`, or cannot be read.
  std::optional<std::string> read(std::string_view name, std::size_t most = kLargestPage) const;
  // A descriptor of the file to read from, -1 without one. The caller closes it.
  int open(std::string_view name) const;

 private:
  void swap(SourceTree& other) noexcept;

  std::string folder_;
  int fd_ = -1;
  std::vector<std::string> names_;
  std::vector<std::string> links_left_out_;
};

}  // namespace olh_import

#endif
