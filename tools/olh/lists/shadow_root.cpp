#include "shadow_root.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <optional>
#include <stdexcept>
#include <string_view>

#include "files.h"

namespace olh {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kLargestList = 256 * 1024 * 1024;  // a million documents

// What the generator writes. tdklist.js is only written when it is missing.
constexpr const char* kWritten[] = {"htmldocs/QEL/lib/LibList.js", "htmldocs/QEL/lib/LibraryAvailable.js",
                                    "tomedecks/basic.htm", "tomedecks/qel_td/js/LibList.js",
                                    "tomedecks/qel_td/js/tdklist_installed.js"};

// Whether a file that the generator writes lies below this directory.
bool holds_written(const fs::path& relative) {
  const std::string directory = relative.string() + "/";
  for (const char* file : kWritten)
    if (std::string(file).starts_with(directory)) return true;
  return false;
}

void mirror(const fs::path& root, const fs::path& shadow, const fs::path& relative) {
  for (const fs::directory_entry& entry : fs::directory_iterator(root / relative)) {
    const fs::path name = relative / entry.path().filename();
    if (holds_written(name) && fs::is_directory(entry.path())) {
      if (access(entry.path().c_str(), R_OK) != 0) continue;  // as good as missing, to the generator too
      fs::create_directory(shadow / name);
      mirror(root, shadow, name);
    } else if (!is_generated_list(name)) {
      fs::create_symlink(fs::absolute(entry.path()), shadow / name);
    }
  }
}

// How often each line stands in a text, with its line feed.
std::map<std::string, int> counted_lines(std::string_view text) {
  std::map<std::string, int> lines;
  while (!text.empty()) {
    const std::string_view line = text.substr(0, std::min(text.find('\n'), text.size() - 1) + 1);
    ++lines[std::string(line)];
    text.remove_prefix(line.size());
  }
  return lines;
}

ListChange compared(const fs::path& before, const fs::path& after) {
  ListChange change;
  std::error_code failed;
  change.is_new = !fs::exists(before, failed);
  const auto old = olh_viewers::text_of_file(before, kLargestList);
  change.is_unreadable = !change.is_new && !old;
  const auto text = olh_viewers::text_of_file(after, kLargestList);
  if (change.is_unreadable || old == text) return change;
  std::map<std::string, int> lines = counted_lines(text.value_or(""));
  for (const auto& [line, count] : counted_lines(old.value_or(""))) lines[line] -= count;
  for (const auto& [line, count] : lines) (count > 0 ? change.more : change.less) += std::abs(count);
  return change;
}

}  // namespace

bool is_generated_list(const fs::path& relative) {
  for (const char* file : kWritten)
    if (relative == file) return true;
  return false;
}

ShadowRoot::ShadowRoot(const std::string& root)
    : root_(root), path_((fs::temp_directory_path() / "olh-dmerge-XXXXXX").string()) {
  if (mkdtemp(path_.data()) == nullptr) throw std::runtime_error("no directory can be made for temporary files");
  try {
    mirror(root_, path_, "");
  } catch (const fs::filesystem_error&) {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
    throw;
  }
}

ShadowRoot::~ShadowRoot() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

std::string ShadowRoot::unveiled(std::string text) const {
  for (std::size_t at = text.find(path_); at != std::string::npos; at = text.find(path_, at + root_.size()))
    text.replace(at, path_.size(), root_);
  return text;
}

std::vector<ListChange> changes_in(const ShadowRoot& shadow, const std::string& root,
                                   const std::vector<std::string>& written) {
  std::vector<ListChange> changes;
  for (const std::string& file : written) {
    const fs::path relative = fs::path(file).lexically_relative(shadow.path());
    ListChange change = compared(root / relative, file);
    change.file = relative.string();
    if (change.is_new || change.is_unreadable || change.more != 0 || change.less != 0) changes.push_back(change);
  }
  return changes;
}

}  // namespace olh
