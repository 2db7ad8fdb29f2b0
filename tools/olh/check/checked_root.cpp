#include "checked_root.h"

#include <algorithm>
#include <array>
#include <exception>
#include <filesystem>
#include <system_error>

#include "files.h"
#include "find.h"
#include "olh/support.h"
#include "shared.h"

namespace olh {

namespace {

namespace fs = std::filesystem;

std::string without_slashes_at_end(std::string path) {
  while (path.size() > 1 && path.ends_with('/')) path.pop_back();
  return path;
}

std::string full_name(const std::string& root) {
  if (is_web_root(root)) return without_slashes_at_end(root);
  std::error_code failed;
  const fs::path absolute = fs::absolute(root, failed);
  return without_slashes_at_end(failed ? root : absolute.lexically_normal().string());
}

// What the generator and the pages share, and the tips of a search: no manuals.
bool is_no_manual(const std::string& name) { return name == "QEL" || name == "_a_search_tips"; }

bool is_page(const std::string& name) { return name.ends_with(".htm") || name.ends_with(".html"); }

std::vector<std::string> manual_names(const CheckedRoot& root) {
  std::vector<std::string> names;
  if (root.is_web) {
    for (const Holding& one : root.holdings.all)
      if (one.html) names.push_back(one.name);
    return names;
  }
  for (const std::string& name : root.names_in("htmldocs")) {
    const bool has_page = std::ranges::any_of(root.names_in("htmldocs/" + name), is_page);
    if (!is_no_manual(name) && (has_page || root.has("htmldocs/" + name + "/QELdata"))) names.push_back(name);
  }
  return names;
}

CheckedManual read_manual(const CheckedRoot& root, const std::string& name) {
  CheckedManual manual;
  manual.name = name;
  manual.directory = "htmldocs/" + name;
  manual.table = manual.directory + "/" + olh_viewers::kTopicTable;
  manual.script = text_in_root(root.path, manual.table);
  if (manual.script) manual.topics = olh_viewers::topics_in_table(*manual.script);
  return manual;
}

std::string reason_in(const SearchRoots& search, const std::string& path) {
  for (const JudgedRoot& one : search.rejected)
    if (one.path == path) return one.reason;
  return "is not taken as one";
}

}  // namespace

bool CheckedRoot::has(const std::string& relative) const {
  const std::string place = place_in_root(path, relative);
  if (!is_web) return path_exists(place.c_str()) == 1;
  std::array<char, OLH_BUFFER_SIZE> found{};
  return FindPath(found.data(), place.c_str() + path.size()) == 1;
}

std::string CheckedRoot::pdf_named(const std::string& name) const {
  for (const char* directory : {"pdfdocs/", "system_admin_docs/"})
    if (has(directory + name + ".pdf")) return directory + name + ".pdf";
  return "";
}

std::vector<std::string> CheckedRoot::names_in(const std::string& directory) const {
  if (is_web) return {};
  std::vector<std::string> names = olh_viewers::names_in(place_in_root(path, directory)).names;
  std::sort(names.begin(), names.end());
  return names;
}

std::optional<CheckedRoot> read_root(const std::string& root, std::string& reason) {
  for (const char* name : kRootVariables) unsetenv(name);
  setenv(kSystemRoots, "", 1);  // nor this program's own root
  for (const char* name : {"OLH_LOG_HELP", "QEL_DOC_TYPE"}) unsetenv(name);
  CheckedRoot read;
  read.path = full_name(root);
  read.is_web = is_web_root(read.path);
  if (const auto waiting = root_without_answer(read.path)) {
    const std::string named = "names " + waiting->path + " in its options file, and that " + no_answer_in_time();
    reason = waiting->options_file.empty() ? no_answer_in_time() : named + ": nothing more is looked at";
    return std::nullopt;
  }
  read.search = find_search_roots(read.path);
  if (std::ranges::find(read.search.roots, read.path, &SearchRoot::path) == read.search.roots.end()) {
    reason = "is no documentation root: it " + reason_in(read.search, read.path);
    return std::nullopt;
  }
  read.holdings = holdings_of(read.path);
  for (const std::string& name : manual_names(read)) read.manuals.push_back(read_manual(read, name));
  if (read.is_web) return read;
  try {
    read.trial = try_lists(read.path);
  } catch (const std::exception& error) {
    read.no_trial = error.what();
  }
  return read;
}

}  // namespace olh
