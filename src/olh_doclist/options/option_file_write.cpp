// Writing the option files.
//
// Knows    where the two files lie, the text that heads a new one, and that an old one is replaced whole.
// Not      which lines of an old file change (option_file_edit), how a file is replaced (file_replacement).
// For      the wrappers.
#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "bounded_text.h"
#include "command.h"
#include "environment.h"
#include "file_replacement.h"
#include "olh/support.h"
#include "olh_doclist.h"
#include "option_dictionary.h"
#include "option_file_edit.h"
#include "option_files.h"
#include "root_options.h"
#include "shell_quote.h"
#include "unique_fd.h"
#include "viewer_choice.h"

namespace olh {

namespace {

constexpr char kHeaderStart[] =
    "################################################################################\n"
    "# qel_doc_options.ini \n"
    "# \n"
    "# This file lets you configure how documentation is accessed through the use    \n"
    "# of variables that override default settings.    \n"
    "# \n"
    "# Examples : \n"
    "# \n";
constexpr char kTreeExamples[] =
    "# Set Alternate Documentation Location access path:\n"
    "#  Windows example\n"
    "#      QEL_ALT_DOC_PATH=\"Z:\\QuillworksFlow\\7.9.2QW\\docs\" \n"
    "#   Linux/UNIX example \n"
    "#      QEL_ALT_DOC_PATH=\"/usr/local/qel/QuillworksFlow/7.9.2QW/docs\" \n"
    "#   Web server example \n"
    "#      QEL_ALT_DOC_PATH=\"http://server/QuillworksFlow/7.9.2QW/docs\"   \n"
    "#  \n";
constexpr char kHeaderEnd[] =
    "# Set default web browser:  \n"
    "#   Windows example  \n"
    "#      QEL_HTML_BROWSER=\"C:\\Program Files\\Mozilla Firefox\\firefox.exe\"  \n"
    "#   Linux/UNIX example   \n"
    "#      QEL_HTML_BROWSER=\"/usr/local/bin/firefox\"    \n"
    "################################################################################ \n \n";

struct CloseStream {
  void operator()(std::FILE* stream) const noexcept { std::fclose(stream); }
};
using InputStream = std::unique_ptr<std::FILE, CloseStream>;

// Whole lines of a stream, however long.
class Lines {
 public:
  explicit Lines(std::FILE* stream) noexcept : stream_(stream) {}
  Lines(const Lines&) = delete;
  Lines& operator=(const Lines&) = delete;
  ~Lines() { std::free(text_); }

  bool next(std::string_view& line) noexcept {
    const ssize_t size = getline(&text_, &capacity_, stream_);
    if (size > 0) line = std::string_view(text_, static_cast<std::size_t>(size));
    return size > 0;
  }
  // Whether the lines ended because the file did, and not because of an error.
  bool at_end() const noexcept { return std::feof(stream_) != 0 && std::ferror(stream_) == 0; }

 private:
  std::FILE* stream_;
  char* text_ = nullptr;
  std::size_t capacity_ = 0;
};

// The text of an old file with the key's line in place of the old one, or at its end, but in front of lines there that
// the INI reader still waits to complete. Empty when the file could not be read to its end.
std::optional<std::string> edited_text(std::FILE* stream, const OptionKey& key, const std::string& key_line) {
  OptionFileEdit edit(key);
  Lines lines(stream);
  std::string text;
  std::string waiting;
  for (std::string_view line; lines.next(line);) {
    const OptionFileEdit::Fate fate = edit.fate_of(line);
    if (fate != OptionFileEdit::Fate::kDrop) waiting.append(fate == OptionFileEdit::Fate::kReplace ? key_line : line);
    if (fate == OptionFileEdit::Fate::kReplace || !edit.goes_on()) text.append(std::exchange(waiting, {}));
  }
  if (!lines.at_end()) return std::nullopt;
  if (!edit.has_replaced()) {
    if (!text.empty() && !text.ends_with('\n')) text.append("\n");
    text.append(key_line);
  }
  return text + waiting;
}

// Makes the home directory when it is missing. Whether that went well shows when the file is opened.
void make_home(std::string_view home) {
  const std::string command = "mkdir \"" + shell_in_double_quotes(home) + "\"";
  const bool like_an_option = home.starts_with('-');
  if (!like_an_option && fits_a_command(command)) run_command(command);
}

// What cannot be looked at now is not taken for missing: it would be written anew, without what it holds.
bool exists(const std::string& name) noexcept {
  struct stat status = {};
  return stat(name.c_str(), &status) == 0 || errno != ENOENT;
}

// Whether another file than the one that was opened has the place that is written to.
bool is_replaced(std::FILE* stream, const char* name) noexcept {
  struct stat opened = {};
  struct stat named = {};
  return fstat(fileno(stream), &opened) == 0 && lstat(name, &named) == 0 &&
         (opened.st_dev != named.st_dev || opened.st_ino != named.st_ino);
}

// The file that is to be edited, as a stream; null when it is no option file that anybody could read.
InputStream open_old(const char* name, int further_flags = 0) noexcept {
  UniqueFd fd = open_option_file(name, further_flags);
  InputStream stream(fd ? fdopen(fd.get(), "r") : nullptr);
  if (stream != nullptr) fd.release();
  return stream;
}

}  // namespace

}  // namespace olh

// A null value counts as "". The value is looked at before anything is made or changed.
int olh_docList::SetIniFile(int key, const char* value, int file) {
  if (file == olh::kTreeFile && mDocPathList == nullptr) return OLH_RESULT_NOT_FOUND;
  const olh::OptionKey* const option = olh::option_key(key);
  const bool known_file =
      file == olh::kTreeFile || (file == olh::kUserFile && option != nullptr && !option->only_in_tree_file);
  if (option == nullptr || !known_file) return OLH_RESULT_IO;

  // A home that does not fit is not the same as none: the file of none lies at the root of the file system.
  const bool may_write_home =
      !olh::has_borrowed_rights() && olh::fits(olh::text_of(olh::environment_variable("HOME")));
  if (file == olh::kUserFile && !may_write_home) return OLH_RESULT_IO;
  char home[OLH_BUFFER_SIZE] = "";
  const bool without_home = file == olh::kUserFile && GetHomeDirectory(home) == 0;
  std::string name = file == olh::kUserFile ? std::string(home) + "/." + olh::kViewerOptionsName
                                            : std::string(olh::tree_of(*mDocPathList)) + "/" + olh::kRootOptionsName;
  if (name.starts_with("http://") || !olh::fits(name)) return OLH_RESULT_IO;
  const bool is_new = !olh::exists(name);
  if (!olh::can_be_read_back(*option, olh::text_of(value), is_new)) return OLH_RESULT_IO;
  if (without_home) olh::make_home(home);

  if (is_new) {
    olh::FileReplacement replacement(name);
    if (!olh::exists(name)) {  // nor has another writer made it meanwhile
      writeNewIniFile(replacement.stream(), key, value, file);
      return replacement.commit() ? OLH_RESULT_OK : OLH_RESULT_IO;
    }
  }
  olh::InputStream stream = olh::open_old(name.c_str());
  return stream == nullptr ? OLH_RESULT_IO : modifyOldIniFile(stream.release(), name.data(), key, value);
}

void olh_docList::writeNewIniFile(FILE* stream, int key, const char* value, int file) {
  if (stream == nullptr) return;
  std::fputs(olh::kHeaderStart, stream);
  if (file == olh::kTreeFile) std::fputs(olh::kTreeExamples, stream);
  std::fputs(olh::kHeaderEnd, stream);
  const olh::OptionKey* const option = olh::option_key(key);
  if (option == nullptr || (option->only_in_tree_file && file != olh::kTreeFile)) return;
  const std::string line = std::string(option->before_in_new_file) + olh::option_line(*option, olh::text_of(value));
  std::fputs(line.c_str(), stream);
}

int olh_docList::modifyOldIniFile(FILE* stream, char* fileName, int key, const char* value) {
  if (stream == nullptr) {
    print_debug("olh_docList::modifyOldIniFile: fp is null\n");
    return OLH_RESULT_IO;
  }
  olh::InputStream input(stream);
  const olh::OptionKey* const option = olh::option_key(key);
  if (option == nullptr || olh::is_empty(fileName)) return OLH_RESULT_IO;
  olh::FileReplacement file(fileName);
  if (!file) {
    print_debug("olh_docList::modifyOldIniFile: failed: unable to open file %s for writing\n",
                file.temporary_name().c_str());
    return OLH_RESULT_IO;
  }
  // From here on no other writer changes the file; what one changed before is not lost.
  const char* const target = file.target().c_str();
  if (olh::is_replaced(stream, target)) input = olh::open_old(target, O_NOFOLLOW);
  if (input == nullptr) return OLH_RESULT_IO;
  const std::string line = olh::option_line(*option, olh::text_of(value));
  const std::optional<std::string> text = olh::edited_text(input.get(), *option, line);
  if (!text || text->size() > olh::kLargestOptionFile) return OLH_RESULT_IO;
  file.write(*text);
  return file.commit() ? OLH_RESULT_OK : OLH_RESULT_IO;
}

int olh_docList::SetAltViewerPath(OlhViewer viewer, const char* path) {
  if (mDocPathList == nullptr) return OLH_RESULT_NOT_FOUND;
  if (viewer == OLH_VIEWER_PDF) return SetIniFile(2, path, olh::kTreeFile);
  if (viewer == OLH_VIEWER_HTML) return SetIniFile(1, path, olh::kTreeFile);
  return OLH_RESULT_FAILED;
}
