#include "database.h"

#include "refusal.h"
#include "url.h"

namespace olh_import {

namespace {

constexpr int kStepsBetweenCalls = 1'000'000;

// Ends a query, and all after it, when the steps of the connection are used up.
int end_when_used_up(void* steps) { return (*static_cast<int*>(steps) -= kStepsBetweenCalls) < 0 ? 1 : 0; }

}  // namespace

Database::Database(const std::string& path) : path_(path) {
  const std::string address = olh_viewers::url_of(path) + "?mode=ro&immutable=1";
  constexpr int kFlags = SQLITE_OPEN_READONLY | SQLITE_OPEN_URI | SQLITE_OPEN_NOFOLLOW | SQLITE_OPEN_NOMUTEX;
  sqlite3* connection = nullptr;
  const int opened = sqlite3_open_v2(address.c_str(), &connection, kFlags, nullptr);
  connection_.reset(connection);
  if (path.empty() || opened != SQLITE_OK) refuse();
  sqlite3_limit(connection, SQLITE_LIMIT_LENGTH, static_cast<int>(kLargestTable));
  for (const int off : {SQLITE_DBCONFIG_ENABLE_VIEW, SQLITE_DBCONFIG_ENABLE_TRIGGER, SQLITE_DBCONFIG_TRUSTED_SCHEMA})
    sqlite3_db_config(connection, off, 0, nullptr);
  sqlite3_progress_handler(connection, kStepsBetweenCalls, end_when_used_up, &steps_left_);
}

bool Database::has_table(const std::string& name) const {
  bool found = false;
  for_each("SELECT name FROM sqlite_master WHERE type = 'table'",
           [&](const Row& row) { found = found || row.front() == name; });
  return found;
}

void Database::for_each(const std::string& query, const std::function<void(const Row&)>& take) const {
  sqlite3_stmt* prepared = nullptr;
  if (sqlite3_prepare_v2(connection_.get(), query.c_str(), -1, &prepared, nullptr) != SQLITE_OK) refuse();
  const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> statement(prepared, sqlite3_finalize);
  Row row(static_cast<std::size_t>(sqlite3_column_count(prepared)));
  int state = SQLITE_OK;
  while ((state = sqlite3_step(prepared)) == SQLITE_ROW) {
    for (int column = 0; column < sqlite3_column_count(prepared); ++column) {
      const bool is_blob = sqlite3_column_type(prepared, column) == SQLITE_BLOB;
      const void* const bytes =
          is_blob ? sqlite3_column_blob(prepared, column) : sqlite3_column_text(prepared, column);
      const auto size = static_cast<std::size_t>(sqlite3_column_bytes(prepared, column));
      if (size > bytes_left_) throw Refusal(kNoSource, path_ + " holds too much.");
      bytes_left_ -= size;
      row[static_cast<std::size_t>(column)] =
          bytes == nullptr ? std::string_view() : std::string_view(static_cast<const char*>(bytes), size);
    }
    take(row);
  }
  if (state != SQLITE_DONE) refuse();
}

void Database::refuse() const {
  throw Refusal(kNoSource, path_ + " is no database that can be read: " + sqlite3_errmsg(connection_.get()) + ".");
}

}  // namespace olh_import
