#include "kept_results.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <nlohmann/json.hpp>

#include "files.h"
#include "session_files.h"

namespace olh {

namespace {

constexpr std::string_view kPrefix = "results.";
constexpr int kMillisecondsOfLock = 200;

// A terminal is known by its session: it has one of its own, as has each pane of a multiplexer.
pid_t this_terminal() { return getsid(0); }

std::string file_of(const std::string& directory, pid_t terminal) {
  return olh_viewers::path_in(directory, std::string(kPrefix) + std::to_string(terminal));
}

bool is_gone(pid_t terminal) { return kill(terminal, 0) != 0 && errno == ESRCH; }

void remove_lists_of_gone_terminals(const std::string& directory) {
  for (const std::string& name : olh_viewers::names_in(directory).names) {
    pid_t terminal = 0;
    if (name.starts_with(kPrefix)) std::from_chars(name.data() + kPrefix.size(), name.data() + name.size(), terminal);
    if (terminal > 0 && is_gone(terminal)) unlink(file_of(directory, terminal).c_str());
  }
}

nlohmann::json row_of(const ListedHit& hit) {
  return {hit.title, hit.document, hit.topic, hit.place, hit.is_pdf, hit.page};
}

}  // namespace

ListedResults listed_results(const SearchHits& found, const std::string& query, const std::string& scope) {
  ListedResults results = {query, scope, found.root, found.index, {}};
  for (const olh_search::Hit& hit : found.hits) results.hits.push_back(listed(hit));
  return results;
}

void keep_results(const ListedResults& results) {
  std::string said;
  const std::string directory = olh_viewers::session_directory(said);
  if (directory.empty()) return;
  remove_lists_of_gone_terminals(directory);
  nlohmann::json rows = nlohmann::json::array();
  for (const ListedHit& hit : results.hits) rows.push_back(row_of(hit));
  const nlohmann::json kept = {results.query, results.scope, results.root, results.index, rows};
  const olh_viewers::LockedFile file(file_of(directory, this_terminal()), kMillisecondsOfLock);
  if (file) file.write(kept.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace));
}

std::optional<ListedResults> kept_results() {
  std::string said;
  const std::string directory = olh_viewers::session_directory(said);
  if (directory.empty()) return std::nullopt;
  const std::string text = olh_viewers::content_of(file_of(directory, this_terminal()));
  try {
    const nlohmann::json kept = nlohmann::json::parse(text);
    ListedResults results = {kept.at(0), kept.at(1), kept.at(2), kept.at(3), {}};
    for (const nlohmann::json& row : kept.at(4))
      results.hits.push_back({row.at(0), row.at(1), row.at(2), row.at(3), row.at(4), row.at(5)});
    return results;
  } catch (const nlohmann::json::exception&) {
    return std::nullopt;
  }
}

}  // namespace olh
