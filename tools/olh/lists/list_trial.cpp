#include "list_trial.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <optional>
#include <stdexcept>
#include <string_view>

#include "files.h"
#include "list_failure.h"
#include "olh/dmerge.h"
#include "search_index.h"
#include "shared.h"

namespace olh {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kLargestList = 256 * 1024 * 1024;  // a million documents

// Whether a file that the generator writes lies below this directory.
bool holds_generated(const fs::path& relative) {
  const std::string directory = relative.string() + "/";
  return std::ranges::any_of(kGeneratedLists,
                             [&](const char* file) { return std::string_view(file).starts_with(directory); });
}

void mirror(const fs::path& root, const fs::path& shadow, const fs::path& relative) {
  for (const fs::directory_entry& entry : fs::directory_iterator(root / relative)) {
    const fs::path name = relative / entry.path().filename();
    if (holds_generated(name) && fs::is_directory(entry.path())) {
      if (access(entry.path().c_str(), R_OK) != 0) continue;  // as good as missing, to the generator too
      fs::create_directory(shadow / name);
      mirror(root, shadow, name);
    } else if (!is_generated_list(name)) {
      fs::create_symlink(fs::absolute(entry.path()), shadow / name);
    }
  }
}

// A root whose lists can be made without touching it; gone at the end of the scope.
class ShadowRoot {
 public:
  explicit ShadowRoot(const std::string& root)
      : root_(root), path_((fs::temp_directory_path() / "olh-dmerge-XXXXXX").string()) {
    if (mkdtemp(path_.data()) == nullptr) throw std::runtime_error("no directory can be made for temporary files");
    try {
      mirror(root_, path_, "");
    } catch (const fs::filesystem_error&) {
      remove();
      throw;
    }
  }
  ShadowRoot(const ShadowRoot&) = delete;
  ShadowRoot& operator=(const ShadowRoot&) = delete;
  ~ShadowRoot() { remove(); }

  const std::string& path() const { return path_; }

  // A text in which the shadow is called by the root's name.
  std::string unveiled(std::string text) const {
    olh_viewers::replace_all(text, path_, root_);
    return text;
  }

 private:
  void remove() const {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
  }

  std::string root_;
  std::string path_;
};

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

ListTrial try_lists(const std::string& root, bool with_index) {
  const ShadowRoot shadow(root);
  ListTrial trial = {make_lists_silently(shadow.path()), {}, ""};
  for (std::string& message : trial.run.messages) message = shadow.unveiled(message);
  if (trial.run.result != DMERGE_RESULT_OK) trial.failure = shadow.unveiled(sentence_about_failure(trial.run));
  for (const std::string& file : trial.run.files) {
    const fs::path relative = fs::path(file).lexically_relative(shadow.path());
    ListChange change = compared(root / relative, file);
    change.file = relative.string();
    if (change.is_new || change.is_unreadable || change.more != 0 || change.less != 0)
      trial.changes.push_back(change);
  }
  const IndexState index = with_index ? state_of_search_index(root) : IndexState::kGood;
  if (index != IndexState::kGood) trial.changes.push_back({kHeadOfIndex, index == IndexState::kMissing});
  return trial;
}

std::string state_of(const ListChange& change) {
  if (change.is_new) return "is missing";
  if (change.is_unreadable) return "cannot be read, or is no regular file";
  if (change.more + change.less == 0) return "is out of date: what it was made from has changed";
  return "is out of date: " + counted(static_cast<std::size_t>(change.more), "line", "lines") + " to add, " +
         counted(static_cast<std::size_t>(change.less), "line", "lines") + " to remove";
}

}  // namespace olh
