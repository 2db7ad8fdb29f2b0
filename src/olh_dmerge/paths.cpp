#include "paths.h"

#include <cstring>

#include "olh/dmerge.h"
#include "olh/support.h"

namespace olh {

void append(std::string& text, std::initializer_list<std::string_view> parts) {
  for (const std::string_view part : parts) text.append(part);
}

std::string clean_path(std::initializer_list<std::string_view> parts) {
  std::string path;
  append(path, parts);
  cleanPath(path.data());
  path.resize(std::strlen(path.c_str()));
  return path;
}

}  // namespace olh

void cleanPath(char* path) noexcept { dirslash(path); }
int pathExists(const char* path) noexcept { return path_exists(path); }
void lcStr(char* s) noexcept { downcase(s); }
