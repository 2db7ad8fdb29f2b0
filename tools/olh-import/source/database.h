// A database of a source (SQLite), as the readers see it: rows of text.
//
// Knows    that it is a stranger's: it is opened to be read, and as one that nobody changes, so that nothing is written
//          beside it; no view, trigger or function of its own runs; what never ends is ended.
// Not      what the tables mean.
// Owns     the connection.
// For      the readers.
#ifndef OLH_IMPORT_DATABASE_H
#define OLH_IMPORT_DATABASE_H

#include <sqlite3.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "bounds.h"

namespace olh_import {

class Database {
 public:
  // A Refusal says when it cannot be read, here and below.
  explicit Database(const std::string& path);
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  bool has_table(const std::string& name) const;

  // The columns of a row, as bytes; they live until the next one. NULL is "", a number its digits.
  using Row = std::vector<std::string_view>;
  void for_each(const std::string& query, const std::function<void(const Row&)>& take) const;

 private:
  struct Close {
    void operator()(sqlite3* connection) const { sqlite3_close(connection); }
  };
  [[noreturn]] void refuse() const;

  std::string path_;
  int steps_left_ = kMostSteps;
  mutable std::size_t bytes_left_ = kLargestPacked;  // of all rows: they may lie in each other
  std::unique_ptr<sqlite3, Close> connection_;
};

}  // namespace olh_import

#endif
