// The string helpers and file tests that every room and any host may use.
#include <sys/stat.h>
#include <unistd.h>

#include <cctype>
#include <cstring>

#include "bounded_text.h"
#include "olh/support.h"

const char pathslash = '/';
const char PATHSLASH = '/';
const char NONPATHSLASH = '\\';
const char* pathsep = ":";

void downcase(char* s) noexcept {
  if (s == nullptr) return;
  for (; *s != '\0'; ++s) *s = static_cast<char>(std::tolower(static_cast<unsigned char>(*s)));
}

void dirslash(char* s) noexcept {
  if (olh::is_empty(s)) return;
  char* end = s;
  for (; *end != '\0'; ++end)
    if (*end == '\\') *end = '/';
  if (end[-1] == '/') end[-1] = '\0';
}

void urlslash(char* s) noexcept { dirslash(s); }

int exe_exists(const char* path) noexcept {
  struct stat status = {};
  return !olh::is_empty(path) && access(path, X_OK) == 0 && stat(path, &status) == 0 && !S_ISDIR(status.st_mode) ? 1
                                                                                                                 : 0;
}

int path_exists(const char* path) noexcept { return !olh::is_empty(path) && access(path, R_OK) == 0 ? 1 : 0; }

void remove_leaf(char* path) noexcept {
  if (olh::is_empty(path)) return;
  if (char* slash = std::strrchr(path, '/')) *slash = '\0';
}

int is_url(const char* s) noexcept {
  const std::string_view text = olh::text_of(s);
  return text.starts_with("http://") || text.starts_with("file://") || text.starts_with("https://") ? 1 : 0;
}

long string_pos(char* s, const char* needle) noexcept {
  constexpr long kNotThere = 99;
  if (olh::is_empty(s)) return kNotThere;
  const std::size_t position = std::string_view(s).find(olh::text_of(needle));
  return position == std::string_view::npos ? kNotThere : static_cast<long>(position);
}
