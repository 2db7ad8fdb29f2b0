#include "root_place.h"

#include <filesystem>

#include "olh/support.h"

namespace olh {

namespace fs = std::filesystem;

std::string refusal_of_root(const std::string& root) {
  if (root.empty()) return "the name of the root is empty.";
  if (is_url(root.c_str()) != 0) return root + " is an address: a root is made where its files lie, in a directory.";
  if (root.find(':') != std::string::npos)
    return "':' separates the roots of a search path: no root has it in its name.";
  return "";
}

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

bool takes_new_root(const std::string& place, std::error_code& failed) {
  const fs::file_type type = fs::symlink_status(place, failed).type();
  if (type == fs::file_type::not_found) return true;
  return type == fs::file_type::directory && fs::is_empty(place, failed);
}

std::string no_root(const std::string& directory) {
  return directory + " is there already and is not a documentation root. Name one, an empty directory, or a new one.";
}

}  // namespace olh
