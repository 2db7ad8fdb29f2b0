// The two option files, as the library reads them, and what keeps one from being read.
//
// Knows    where the user's file lies, and the INI reader's two messages about a line.
// Not      which roots' files are read and when (search_path).
// For      viewer_choice, setup, and every verb that explains a failure.
#ifndef OLH_TOOLS_OPTION_FILE_H
#define OLH_TOOLS_OPTION_FILE_H

#include <string>
#include <vector>

namespace olh {

// One line for which the INI reader gives up a whole file. Line 0: the file as such.
struct SpoiltFile {
  std::string file;
  int line = 0;
  std::string reason;
};

inline constexpr const char* kUnreadable = "no regular file of at most 64 KiB that can be read";

struct OptionFile {
  std::string browser;  // "" when the file names none that is an executable
  std::string reader;
  std::vector<SpoiltFile> spoilt;
};

// The user's file. Without HOME it lies at the top of the file system, where the library looks for it too.
std::string user_option_file();

// Reads a file through the library. One that is missing is empty.
OptionFile read_option_file(const std::string& file);

// What keeps the user's file from being read.
std::vector<SpoiltFile> user_file_faults();

// What a file's text holds for a key, whether or not it is an executable; "" for nothing. Only for telling the user.
std::string written_value(const std::string& file, const std::string& key);

// The INI reader reads a file through /proc/self/fd, and complains of that name: the same complaint with the file's own,
// as long as the reader is at it.
std::string with_file_named(const std::string& complaint);

// The INI reader's complaints among captured lines, each once.
std::vector<SpoiltFile> reader_complaints(const std::vector<std::string>& lines);

// A sentence on standard error: a tree's options file could not be written.
void complain_unwritten(const std::string& file);

// One sentence a spoilt file, on standard error.
void complain_about(const std::vector<SpoiltFile>& spoilt);
// The same, and that nothing is changed: what is written there could not be read back. False when none is spoilt.
bool refuse_change(const std::vector<SpoiltFile>& spoilt);

}  // namespace olh

#endif
