// The home directory, and programs along a list of directories.
//
// Knows    HOME, and that the first executable along a variable's directories is the program.
// Not      which programs are looked for (the launchers, the client).
// For      the wrappers, and option_file_write, whose first file lies in the home directory.
#include <sys/stat.h>

#include <string>

#include "bounded_text.h"
#include "directory_list.h"
#include "environment.h"
#include "olh/support.h"
#include "olh_doclist.h"

int olh_docList::GetHomeDirectory(char* out) {
  const std::string_view home = olh::text_of(olh::environment_variable("HOME"));
  if (!olh::write_buffer(out, home) || home.empty()) return 0;
  print_debug("olh_docList::GetHomeDirectory: %s\n", out);
  struct stat status = {};
  return stat(out, &status) == 0 ? 1 : 0;
}

//   PATH                     tested for "firefox"
//   /opt/x/:/usr/bin         /opt/x/firefox, /usr/bin/firefox
//   \opt\x::/usr/bin/        /opt/x/firefox, /usr/bin/firefox
int olh_docList::search_path(char* out, const char* program, const char* envName) {
  const std::string name(olh::text_of(program));  // may lie in `out`
  olh::clear_buffer(out);
  if (out == nullptr || program == nullptr) return 0;
  std::string directories(
      olh::text_of(olh::is_empty(envName) ? olh::program_directories() : olh::environment_variable(envName)));
  dirslash(directories.data());
  for (const std::string_view directory : olh::split_directory_list(directories.c_str()))
    if (const std::string path = olh::path_in(directory, name); exe_exists(path.c_str()) == 1)
      if (olh::write_buffer(out, path)) return 1;
  return 0;
}
