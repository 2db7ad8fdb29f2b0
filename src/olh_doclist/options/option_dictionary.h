// One option file, loaded.
//
// Knows    which files are loaded at all: readable, regular, and small enough for a reader that is quadratic in keys;
//          that what is loaded is the file that was looked at, whatever has its name meanwhile.
// Not      what the keys mean (root_options, option_file_read).
// Owns     the dictionary of the INI reader; the values point into it.
// For      the two readers of option files of this room (nothing else calls the INI reader), and their writer.
#ifndef OLH_DOCLIST_OPTION_DICTIONARY_H
#define OLH_DOCLIST_OPTION_DICTIONARY_H

#include <iniparser.h>

#include <cstdint>
#include <string_view>

#include "unique_fd.h"

namespace olh {

// The keys of both option files. They stand outside any section.
inline constexpr char kAltDocPathKey[] = ":qel_alt_doc_path";
inline constexpr char kHtmlBrowserKey[] = ":qel_html_browser";
inline constexpr char kPdfReaderKey[] = ":qel_pdf_reader";

// A larger option file counts as unreadable.
inline constexpr std::uint64_t kLargestOptionFile = 64 * 1024;

// Opens an option file for reading; empty for what nobody loads, and, with O_NOFOLLOW, for a symbolic link.
UniqueFd open_option_file(const char* file, int further_flags = 0) noexcept;

// What an option file would hold.
struct OptionText {
  std::string_view text;
};

class OptionDictionary {
 public:
  // Loads `file`; null counts as a file that is not there. Throws std::bad_alloc.
  explicit OptionDictionary(const char* file);
  // Loads a text; as good as a missing file where the system has no files in memory.
  explicit OptionDictionary(OptionText text);
  ~OptionDictionary();
  OptionDictionary(const OptionDictionary&) = delete;
  OptionDictionary& operator=(const OptionDictionary&) = delete;

  // Whether the file was read and parsed.
  explicit operator bool() const noexcept { return dictionary_ != nullptr; }
  // The value, which may be ""; null when the key is absent. Valid as long as this object.
  const char* value_of(const char* key) const noexcept;

 private:
  dictionary* dictionary_;
};

}  // namespace olh

#endif
