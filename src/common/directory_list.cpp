#include "directory_list.h"

#include "bounded_text.h"
#include "olh/support.h"

namespace olh {

std::vector<std::string_view> split_directory_list(std::string_view list) {
  const std::string_view separators = is_empty(pathsep) ? std::string_view(":") : std::string_view(pathsep);
  std::vector<std::string_view> pieces;
  while (!list.empty()) {
    const std::size_t end = list.find_first_of(separators);
    const std::string_view piece = list.substr(0, end);
    if (!piece.empty()) pieces.push_back(piece);
    if (end == std::string_view::npos) break;
    list.remove_prefix(end + 1);
  }
  return pieces;
}

std::string path_in(std::string_view directory, std::string_view name) {
  std::string path(directory);
  if (directory.empty() || directory.back() != pathslash) path += pathslash;
  return path.append(name);
}

}  // namespace olh
