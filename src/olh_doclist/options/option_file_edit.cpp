#include "option_file_edit.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <utility>

#include "bounded_text.h"
#include "olh/support.h"
#include "olh_doclist.h"
#include "option_dictionary.h"

namespace olh {

namespace {

constexpr OptionKey kKeys[] = {
    {"QEL_HTML_BROWSER", "\n ", false, false},
    {"QEL_PDF_READER", "\n ", false, false},
    {"QEL_ALT_DOC_PATH", " ", true, true},
};

// A key for trials.
constexpr OptionKey kAnyKey = {"KEY", "", false, false};

// Over a longer line, its line feed included, the INI reader gives up the whole file.
constexpr std::size_t kLongestLine = 1023;

// From iniparser 4.2 on a backslash in quotes stands for the character behind it. The reader that is linked tells.
bool keeps_backslashes(std::string_view value) {
  if (value.find('\\') == std::string_view::npos) return true;
  const std::string line = option_line(kAnyKey, value);
  const OptionDictionary trial(OptionText{line});
  return text_of(trial.value_of(":key")) == value;
}

bool is_white_space(char byte) noexcept { return std::isspace(static_cast<unsigned char>(byte)) != 0; }

}  // namespace

const OptionKey* option_key(int code) noexcept {
  return code >= 1 && code <= static_cast<int>(std::size(kKeys)) ? &kKeys[code - 1] : nullptr;
}

std::string option_line(const OptionKey& key, std::string_view value) {
  return std::string(key.name).append("=\"").append(value).append("\"\n");
}

bool can_be_read_back(const OptionKey& key, std::string_view value, bool is_new_file) {
  constexpr std::size_t kAroundValue = std::string_view("=\"\"\n").size();
  const std::size_t indent = is_new_file ? 1 : 0;
  return value.size() <= kLongestLine - kAroundValue - indent - key.name.size() &&
         value.find_first_of("\"\n") == std::string_view::npos && keeps_backslashes(value);
}

std::string_view stripped(std::string_view text) noexcept {
  const auto first = std::find_if_not(text.begin(), text.end(), is_white_space);
  const auto last = std::find_if_not(text.rbegin(), std::make_reverse_iterator(first), is_white_space);
  return text.substr(static_cast<std::size_t>(first - text.begin()), static_cast<std::size_t>(last.base() - first));
}

// As the INI reader does it: without the white space at the end of what it has joined so far, it looks for a backslash
// there, and takes that away. It also passes over a single character at the end of a file.
bool OptionFileEdit::waits_for_more(std::string_view line) {
  joined_.append(line);
  if (joined_.size() == 1 && joined_ != "\n") return true;
  while (!joined_.empty() && is_white_space(joined_.back())) joined_.pop_back();
  if (joined_.ends_with('\\'))
    joined_.pop_back();
  else
    joined_.clear();
  return !joined_.empty();
}

OptionFileEdit::Fate OptionFileEdit::fate_of(std::string_view line) {
  const std::string_view text = stripped(line);
  const bool continues = std::exchange(continues_, waits_for_more(line));
  if (text.empty()) return Fate::kCopy;
  const bool is_comment = text.front() == '#' || text.front() == ';';
  const Fate fate = is_comment ? Fate::kCopy : fate_of_text(text, continues);
  copied_ = fate == Fate::kCopy;
  return fate;
}

// The first line that matches; "names the key" is meant as a substring, upper case. What the INI reader joins to a
// copied line is copied: nothing else may come to stand behind a backslash.
//
//   in the key's old quoted value?   line                                          fate
//   either                           goes on after a copied line                   copy
//   no                               goes on after the key's line, without "=",    drop: alone it voids the file
//                                      or with nothing before it
//   yes                              names the key                                 drop; it is part of the old value
//   no                               names the key, opens a quote for good         drop; the old value begins
//   no                               names the key                                 replace
//   yes                              has a quote                                   replace; the old value ends
//   yes                              any other                                     drop
//   no                               any other                                     copy
OptionFileEdit::Fate OptionFileEdit::fate_of_text(std::string_view text, bool continues) {
  const bool was_skipping = skipping_;
  const auto quotes = std::count(text.begin(), text.end(), '"');
  if (quotes == 0) {
    print_debug("olh_docList::modifyOldIniFile: either multi-lined comment or unrelated line in .ini: %.*s\n",
                static_cast<int>(text.size()), text.data());
  } else if (was_skipping) {
    print_debug("olh_docList::modifyOldIniFile: end of multi-lined variable\n");
    skipping_ = false;
  }

  if (continues && copied_) return Fate::kCopy;
  const std::size_t equals_sign = text.find('=');
  const bool stands_alone = equals_sign != std::string_view::npos && equals_sign > 0;
  if (continues && !was_skipping && !stands_alone) return Fate::kDrop;
  const bool names_key = text.find(key_.name) != std::string_view::npos;
  if (names_key && key_.spans_lines && (was_skipping || quotes == 1)) {
    skipping_ = true;
    return Fate::kDrop;
  }
  if (!names_key && !was_skipping) return Fate::kCopy;
  if (!names_key && quotes == 0) return Fate::kDrop;
  skipping_ = false;
  replaced_ = true;
  return Fate::kReplace;
}

}  // namespace olh

// What does not fit the buffer comes back empty.
const char* olh_docList::strstrip(char* s) {
  static char result[OLH_BUFFER_SIZE];
  if (s == nullptr) return nullptr;
  olh::write_buffer(result, olh::stripped(s));
  return result;
}
