// One key of an option file: how its line is written, and what becomes of the lines of a file that has it already.
//
// Knows    the three keys, the lines that belong to one, and what the INI reader can read back.
// Not      where the files lie and how they are replaced (option_file_write).
// For      option_file_write.
#ifndef OLH_DOCLIST_OPTION_FILE_EDIT_H
#define OLH_DOCLIST_OPTION_FILE_EDIT_H

#include <string>
#include <string_view>

namespace olh {

struct OptionKey {
  std::string_view name;
  std::string_view before_in_new_file;  // what precedes its line there
  bool spans_lines;                     // whether an old value may go on until its quote is closed
  bool only_in_tree_file;
};

// The key of a key code; null for any other code.
const OptionKey* option_key(int code) noexcept;

// The key's line, without anything before it.
std::string option_line(const OptionKey& key, std::string_view value);

// Whether the INI reader will give the value back from that line. Throws std::bad_alloc.
bool can_be_read_back(const OptionKey& key, std::string_view value, bool is_new_file);

// `text` without the white space at both ends, by the locale's isspace.
std::string_view stripped(std::string_view text) noexcept;

// Goes through an old file, whose lines are to be shown to it in order.
class OptionFileEdit {
 public:
  enum class Fate { kCopy, kDrop, kReplace };

  explicit OptionFileEdit(const OptionKey& key) noexcept : key_(key) {}

  Fate fate_of(std::string_view line);
  // Whether a line was replaced; without one the key's line is to be appended.
  bool has_replaced() const noexcept { return replaced_; }
  // Whether the INI reader waits for a line after the last one. At the end of a file that line has no effect; behind
  // it another one would be taken for its part.
  bool goes_on() const noexcept { return continues_; }

 private:
  bool waits_for_more(std::string_view line);
  Fate fate_of_text(std::string_view text, bool continues);

  const OptionKey& key_;
  bool replaced_ = false;
  bool skipping_ = false;   // inside the old value, up to its closing quote
  std::string joined_;      // the lines that the INI reader has joined and not yet looked at
  bool continues_ = false;  // there are such: the reader takes this line for a part of them
  bool copied_ = false;     // the last line that was not empty was copied
};

}  // namespace olh

#endif
