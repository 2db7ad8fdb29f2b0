// The folder of the index below a root.
//
// Knows    that a search never sees half an index: all pieces are written into a folder that is named after what is in
//          it, then the head, which names it, takes the place of the old one in one step, and the old folder goes. Of
//          several that make an index of a root at the same time one waits for the other.
// Owns     the folder in which an index is made, and a thread that writes into it while the next pieces are made.
// For      main.
#ifndef OLH_TOOLS_INDEX_INDEX_FOLDER_H
#define OLH_TOOLS_INDEX_INDEX_FOLDER_H

#include <filesystem>
#include <future>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "index_pieces.h"

namespace olh_index {

class IndexFolder {
 public:
  // Throws std::filesystem::filesystem_error where nothing can be written, as the functions below do.
  explicit IndexFolder(const std::filesystem::path& root);
  ~IndexFolder();
  IndexFolder(const IndexFolder&) = delete;
  IndexFolder& operator=(const IndexFolder&) = delete;

  // A piece, its value as JSON. It may be on the disk only when finish has returned, and an earlier one be what fails.
  void write(const std::string& piece, std::string_view value);
  void finish(nlohmann::json head);

  std::filesystem::path head() const { return folder_ / "head.js"; }

 private:
  void begin_writing();

  std::filesystem::path folder_;
  int lock_ = -1;
  std::filesystem::path making_;
  olh_search::Sum sum_;                                       // of all that was written
  std::vector<std::pair<std::string, std::string>> waiting_;  // names of pieces and their scripts
  std::size_t bytes_waiting_ = 0;
  std::future<void> writing_;
};

}  // namespace olh_index

#endif
