#include "list_failure.h"

#include <dirent.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>

#include "olh/dmerge.h"
#include "olh/support.h"

namespace olh {

namespace fs = std::filesystem;

namespace {

std::string system_reason() { return std::strerror(errno); }

// Why the names in a directory that can be opened break off; "" when they do not.
std::string why_broken_off(const std::string& directory) {
  DIR* const stream = opendir(directory.c_str());
  if (stream == nullptr) return "";
  do errno = 0;
  while (readdir(stream) != nullptr);
  std::string reason = errno == 0 ? "" : system_reason();
  closedir(stream);
  return reason;
}

// Why a directory cannot be listed.
std::string why_unlistable(const std::string& directory) {
  if (access((directory + "/").c_str(), R_OK | X_OK) != 0) return system_reason();
  std::string reason = why_broken_off(directory);
  return reason.empty() ? "reading it failed" : reason;
}

std::string why_unreadable(const std::string& file) {
  if (access(file.c_str(), R_OK) != 0) return system_reason();
  return fs::is_regular_file(file) ? "reading it failed" : "it is no regular file";
}

// Why a list cannot be put in its place; a list is put together beside the old one, as NAME.new, or where nothing may be
// created there, in its place.
std::string why_unwritable(const std::string& file) {
  const std::string directory = fs::path(file).parent_path();
  std::error_code failed;
  if (!fs::is_directory(directory, failed)) return "there is no directory " + directory;
  if (fs::exists(file, failed) && !fs::is_regular_file(file, failed)) return "it is no regular file";
  const bool is_there = access(file.c_str(), F_OK) == 0;
  if (is_there && access(file.c_str(), W_OK) != 0) return system_reason();
  if (!is_there && access(directory.c_str(), W_OK | X_OK) != 0) return directory + ": " + system_reason();
  if (fs::is_directory(file + ".new", failed)) return "the directory " + file + ".new is in its way";
  struct statvfs disk = {};
  if (statvfs(directory.c_str(), &disk) == 0 && disk.f_bavail == 0) return "the disk is full";
  return "writing it, or putting it in its place, failed";
}

// The library list, the portals' list or the library flag: whichever the run did not come to.
std::string unwritten_list(const ListRun& run) {
  const auto is_written = [&run](const std::string& file) {
    return std::ranges::count(run.files, file) != 0 ||
           (access(file.c_str(), W_OK) == 0 && access(file.c_str(), R_OK) != 0);
  };
  std::string for_libraries = run.root + "/htmldocs/QEL/lib/LibList.js";
  std::string for_portals = run.root + "/tomedecks/qel_td/js/LibList.js";
  if (!is_written(for_libraries)) return for_libraries;
  if (path_exists((run.root + "/tomedecks").c_str()) != 0 && !is_written(for_portals)) return for_portals;
  return run.root + "/htmldocs/QEL/lib/LibraryAvailable.js";
}

std::string cannot_be_listed(const std::string& what, const std::string& directory) {
  return "the " + what + " cannot be listed: " + directory + ": " + why_unlistable(directory) + ".";
}

std::string cannot_be_read(const std::string& file) {
  return file + " cannot be read: " + why_unreadable(file) + ".";
}

std::string cannot_be_written(const std::string& file) {
  return file + " cannot be written: " + why_unwritable(file) + ".";
}

}  // namespace

std::string sentence_about_failure(const ListRun& run) {
  if (!run.has_root) return "there is no readable directory " + run.root + ".";
  const std::string portals = run.root + "/tomedecks";
  if (run.result == DMERGE_RESULT_UNLISTABLE) return cannot_be_listed("portals", portals);
  if (run.result == DMERGE_RESULT_UNWRITABLE) {
    for (const std::string& documents : {run.root + "/htmldocs", run.root + "/pdfdocs"})
      if (!why_broken_off(documents).empty()) return cannot_be_listed("documents", documents);
    return cannot_be_written(unwritten_list(run));
  }
  const std::string source = portals + "/qel_td/js/tdklist.js";
  if (access(source.c_str(), F_OK) != 0) return cannot_be_written(source);
  std::error_code failed;
  if (path_exists(source.c_str()) == 0 || !fs::is_regular_file(source, failed)) return cannot_be_read(source);
  if (!why_broken_off(portals).empty()) return cannot_be_listed("portals", portals);
  return cannot_be_written(portals + "/qel_td/js/tdklist_installed.js");
}

}  // namespace olh
