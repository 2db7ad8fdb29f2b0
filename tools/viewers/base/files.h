// Files as the tools read them: all of them here, and nowhere else.
//
// Knows    that only regular files are read, up to a limit, without ever waiting for one.
// For      olh, the adapters, and olh-recorder.
#ifndef OLH_TOOLS_VIEWERS_FILES_H
#define OLH_TOOLS_VIEWERS_FILES_H

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace olh_viewers {

inline constexpr std::size_t kMostBytes = 16 * 1024 * 1024;

// The bytes of a regular file; nothing for everything else: a FIFO, a device, a directory, a file with more bytes than
// `most`, and one that cannot be read to its end.
std::optional<std::string> text_of_file(const std::string& path, std::size_t most = kMostBytes);

// The same, and "" for everything else.
std::string content_of(const std::string& path);

// Whether there is such a regular file, of at most 16 MiB; of any size.
bool is_readable_file(const std::string& path);
bool is_regular_file(const std::string& path);

// The executable of that name: itself when it has a "/", else the first along PATH; "" when there is none, or when it is
// the adapter that asks.
std::string find_program(const std::string& name);

// The full path of this program, with symbolic links resolved; "" when the system does not tell.
std::string own_program();

// The executable of that name beside this program, else the first along PATH; "" when there is none.
std::string find_beside(const std::string& name);

// What stands in a directory, in no order.
struct DirectoryNames {
  std::vector<std::string> names;
  std::string why_not_all;  // the directory cannot be opened, or breaks off; "" when it does not, or is not there
};
DirectoryNames names_in(const std::string& directory);

// A name below a directory.
std::string path_in(const std::string& directory, const std::string& name);

// The value of a variable; "" when it is not set.
std::string variable(const char* name);

}  // namespace olh_viewers

#endif
