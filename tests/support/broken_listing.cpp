// A disk that fails in the middle of a directory: readdir, of which the names break off with EIO behind the first, in the
// directory that the variable BROKEN_LISTING names. To be linked into a test program, or preloaded.
#include <dirent.h>
#include <dlfcn.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <string>

namespace {

bool is_to_break_off(DIR* stream) {
  const char* named = std::getenv("BROKEN_LISTING");
  if (named == nullptr) return false;
  char path[PATH_MAX] = "";
  return realpath(("/proc/self/fd/" + std::to_string(dirfd(stream))).c_str(), path) != nullptr &&
         std::string(named) == path;
}

// With files of 64 bits on a system of 32, the C library's function has another name behind the same one.
constexpr const char* kBehind = sizeof(off_t) > sizeof(long) ? "readdir64" : "readdir";

}  // namespace

extern "C" [[gnu::visibility("default")]] dirent* readdir(DIR* stream) {
  static const auto next = reinterpret_cast<dirent* (*)(DIR*)>(dlsym(RTLD_NEXT, kBehind));
  static int given = 0;
  if (telldir(stream) == 0) given = 0;
  dirent* const entry = next(stream);
  if (entry == nullptr || entry->d_name[0] == '.' || !is_to_break_off(stream) || given++ == 0) return entry;
  errno = EIO;
  return nullptr;
}
