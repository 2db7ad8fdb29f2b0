#include "root_place.h"

#include <algorithm>
#include <filesystem>

#include "manual_origin.h"
#include "olh/support.h"

namespace olh {

namespace fs = std::filesystem;

std::string path_of_root(const std::string& given) {
  fs::path path = fs::absolute(given).lexically_normal();
  if (!path.has_filename()) path = path.parent_path();
  return path.string();
}

bool is_root_directory(const std::string& root) {
  for (const char* part : {"htmldocs", "pdfdocs", "qel_doc_options.ini", "system_admin_docs"})
    if (path_exists((root + "/" + part).c_str()) == 1) return true;
  return false;
}

bool is_nothing(const std::string& place, std::error_code& failed) {
  return fs::symlink_status(place, failed).type() == fs::file_type::not_found;
}

namespace {

// What a new file system has, and what olh-import is about to put into the root.
bool is_as_good_as_nothing(const fs::directory_entry& entry) {
  const std::string name = entry.path().filename().string();
  return name == "lost+found" || name.starts_with(olh_viewers::kWorkshop);
}

}  // namespace

bool takes_new_root(const std::string& place, std::error_code& failed) {
  const fs::file_type type = fs::symlink_status(place, failed).type();
  if (type == fs::file_type::not_found) return true;
  if (type != fs::file_type::directory) return false;
  const fs::directory_iterator entries(place, failed);
  return !failed && std::all_of(begin(entries), end(entries), is_as_good_as_nothing);
}

std::string no_root(const std::string& directory) {
  return directory + " is there already and is not a documentation root. Name one, an empty directory, or a new one.";
}

}  // namespace olh
