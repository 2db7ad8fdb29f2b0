#include "option_file.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <string_view>

#include "debug_capture.h"
#include "files.h"
#include "olh/support.h"
#include "output.h"
#include "root_text.h"

namespace olh {

namespace {

constexpr const char* kTooLong = "iniparser: input line too long in ";
constexpr const char* kSyntax = "iniparser: syntax error in ";

std::string trimmed(const std::string& text, const char* characters) {
  const std::size_t begin = text.find_first_not_of(characters);
  if (begin == std::string::npos) return "";
  return text.substr(begin, text.find_last_not_of(characters) - begin + 1);
}

// "PREFIX FILE (LINE)" or "PREFIX FILE (LINE):".
bool parse_complaint(const std::string& line, const std::string& prefix, SpoiltFile& found) {
  if (!line.starts_with(prefix)) return false;
  const std::size_t number = line.rfind(" (");
  if (number == std::string::npos || number < prefix.size()) return false;
  found.file = line.substr(prefix.size(), number - prefix.size());
  found.line = std::atoi(line.c_str() + number + 2);
  return true;
}

// The library says nothing of a file that it cannot open.
bool is_there_in_vain(const std::string& file) {
  constexpr off_t kLargest = 64 * 1024;
  struct stat status = {};
  if (stat(file.c_str(), &status) != 0) return false;
  return !S_ISREG(status.st_mode) || status.st_size > kLargest || access(file.c_str(), R_OK) != 0;
}

void add_once(std::vector<SpoiltFile>& list, const SpoiltFile& found) {
  const auto same = [&](const SpoiltFile& known) { return known.file == found.file && known.line == found.line; };
  if (std::none_of(list.begin(), list.end(), same)) list.push_back(found);
}

}  // namespace

std::string user_option_file() {
  std::array<char, OLH_BUFFER_SIZE> home{};
  GetHomeDirectory(home.data());
  return std::string(home.data()) + "/.qel_viewer_config.ini";
}

OptionFile read_option_file(const std::string& file) {
  std::array<char, OLH_BUFFER_SIZE> alternate{};
  std::array<char, OLH_BUFFER_SIZE> browser{};
  std::array<char, OLH_BUFFER_SIZE> reader{};
  std::string name = file;
  const auto lines =
      debug_lines_of([&] { ReadIniFile(name.data(), alternate.data(), browser.data(), reader.data()); });
  OptionFile read = {browser.data(), reader.data(), reader_complaints(lines)};
  if (is_there_in_vain(file)) read.spoilt.push_back({file, 0, kUnreadable});
  return read;
}

std::vector<SpoiltFile> user_file_faults() { return read_option_file(user_option_file()).spoilt; }

std::string written_value(const std::string& file, const std::string& key) {
  std::string value;
  for (const std::string& line : lines_of(olh_viewers::content_of(file))) {
    const std::string rest = trimmed(line, " \t\r");
    const std::size_t equals = rest.find('=');
    if (equals == std::string::npos || rest[0] == '#' || rest[0] == ';') continue;
    const std::string name = trimmed(rest.substr(0, equals), " \t");
    if (olh_viewers::lower_case(name) == olh_viewers::lower_case(key))
      value = trimmed(rest.substr(equals + 1), " \t\"");
  }
  return value;
}

std::string with_file_named(const std::string& complaint) {
  constexpr std::string_view kDescriptor = "/proc/self/fd/";
  constexpr std::string_view kInMemory = "/memfd:";
  constexpr std::string_view kUnnamed = " (deleted)";
  const std::size_t begin = complaint.find(kDescriptor);
  if (begin == std::string::npos) return complaint;
  const std::size_t end = complaint.find_first_not_of("0123456789", begin + kDescriptor.size());
  std::array<char, OLH_BUFFER_SIZE> target{};
  const std::string link = complaint.substr(begin, end - begin);
  if (readlink(link.c_str(), target.data(), target.size() - 1) <= 0) return complaint;
  std::string name = target.data();
  if (name.starts_with(kInMemory) && name.ends_with(kUnnamed))
    name = name.substr(kInMemory.size(), name.size() - kInMemory.size() - kUnnamed.size());
  return complaint.substr(0, begin) + name + (end == std::string::npos ? "" : complaint.substr(end));
}

std::vector<SpoiltFile> reader_complaints(const std::vector<std::string>& lines) {
  std::vector<SpoiltFile> list;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    SpoiltFile found;
    if (parse_complaint(lines[i], kTooLong, found)) {
      found.reason = "over 1,022 characters (continued lines count together)";
    } else if (parse_complaint(lines[i], kSyntax, found)) {
      found.reason = "no KEY=\"value\"";
      if (i + 1 < lines.size() && lines[i + 1].starts_with("-> ")) found.reason += ": " + lines[i + 1].substr(3);
    } else {
      continue;
    }
    add_once(list, found);
  }
  return list;
}

void complain_unwritten(const std::string& file) {
  complain(file + (is_web_root(file) ? " is on a web server and cannot be written from here: change it on the "
                                       "server."
                                     : " could not be written."));
}

void complain_about(const std::vector<SpoiltFile>& spoilt) {
  for (const SpoiltFile& one : spoilt)
    complain(place_of(one.file, one.line) + ": " + one.reason + ". The whole file is ignored until that is fixed.");
}

bool refuse_change(const std::vector<SpoiltFile>& spoilt) {
  if (spoilt.empty()) return false;
  complain_about(spoilt);
  complain("nothing is changed.");
  return true;
}

}  // namespace olh
