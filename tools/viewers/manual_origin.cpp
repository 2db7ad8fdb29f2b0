#include "manual_origin.h"

#include "files.h"

namespace olh_viewers {

std::string origin_mark(const std::string& verb, const std::string& more) { return "olh " + verb + "\n" + more; }

std::string origin_of(const std::string& manual_folder) {
  const std::string mark = content_of(path_in(manual_folder, kOriginFile));
  for (const char* verb : {"import", "new"})
    if (mark.starts_with(origin_mark(verb))) return verb;
  return "";
}

}  // namespace olh_viewers
