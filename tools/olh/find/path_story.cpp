#include "path_story.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "olh/support.h"

namespace olh {

namespace {

constexpr const char* kNoSuchPath = "failed: path does not exist";
constexpr const char* kNoDocs = "failed: path does not contain docs";
constexpr const char* kInvalid = "failed: invalid args";

bool is_web_address(const std::string& path) {
  return path.rfind("http://", 0) == 0 || path.rfind("https://", 0) == 0;
}

std::string executable_or_nothing(std::string_view program) {
  std::string name(program);
  return exe_exists(name.c_str()) == 1 ? name : "";
}

// A URL is cut at its colons: the "http" before it, and the URL without its port, are not what the user meant.
bool is_piece_of(const JudgedRoot& root, const JudgedRoot& next) {
  return root.path == "http" ? is_web_address(next.path)
                             : is_web_address(root.path) && next.path.rfind(root.path + ":", 0) == 0;
}

// Goes along the lines and keeps what is known at each.
class StoryReader {
 public:
  explicit StoryReader(std::string source) : source_(std::move(source)) {}

  void line(std::string_view text) {
    constexpr std::string_view kClass = "olh_docList::";
    if (!cut_prefix(text, kClass)) return;
    if (cut_prefix(text, "GetOlhVariable: ")) return on_variable(text);
    if (cut_prefix(text, "ValidURL: failed: ")) return void(url_answer_ = text);
    if (cut_prefix(text, "ValidDocPath: ")) return on_judgement(text);
    if (cut_prefix(text, "ReadQelDocOptions: ")) return on_options(text);
    if (text == "SetOlhDocPath") judged_.clear();
    if (text == "SetOlhDocPath: done") end_of_string();
  }

  PathStory story(const std::vector<std::string>& lines) && {
    story_.spoilt = reader_complaints(lines);
    for (const std::string& file : unparsed_) {
      const auto is_known = [&](const SpoiltFile& known) { return known.file == file; };
      if (std::none_of(story_.spoilt.begin(), story_.spoilt.end(), is_known))
        story_.spoilt.push_back({file, 0, kUnreadable});
    }
    if (pending_) story_.waiting = root_at_hand(*pending_);
    return std::move(story_);
  }

 private:
  void on_variable(std::string_view text) {
    if (text != "done" && text != "failed") source_ = text;
  }

  // A path when none waits for its judgement, else the judgement.
  void on_judgement(std::string_view text) {
    if (!pending_ && text != kInvalid) {
      pending_ = std::string(text);
      url_answer_ = "no HTTP/1.1 answer";
      return;
    }
    JudgedRoot root = root_at_hand(pending_.value_or(""));
    root.accepted = text == "done";
    if (!root.accepted) root.reason = reason_for(root.path, text);
    if (!root.parent.empty() && root.parent == root.path) root.parent.clear();
    pending_.reset();
    judged_.push_back(std::move(root));
  }

  JudgedRoot root_at_hand(const std::string& path) const {
    JudgedRoot root = inside_options_;
    root.path = path;
    root.source = source_;
    return root;
  }

  std::string reason_for(const std::string& path, std::string_view text) const {
    if (is_web_address(path))
      return "has neither htmldocs/qelhelp.htm nor tomedecks/index.html (" + url_answer_ + ")";
    if (path == "https") return "a root begins with http://, not with https://";
    if (text == kNoSuchPath) return "does not exist or cannot be read";
    if (text == kNoDocs) return "holds no htmldocs, pdfdocs, system_admin_docs or qel_doc_options.ini";
    return "is empty";
  }

  void on_options(std::string_view text) {
    if (cut_prefix(text, "cannot parse file: ")) {
      unparsed_.emplace_back(text);
    } else if (cut_prefix(text, "QEL_HTML_BROWSER=")) {
      inside_options_.browser = executable_or_nothing(text);
    } else if (cut_prefix(text, "QEL_PDF_READER=")) {
      inside_options_.reader = executable_or_nothing(text);
    } else if (text == "done") {
      inside_options_ = {};
    } else if (!cut_prefix(text, "QEL_ALT_DOC_PATH=")) {
      inside_options_.options_file = text;
      inside_options_.parent = text.substr(0, text.rfind('/'));
    }
  }

  void end_of_string() {
    std::vector<JudgedRoot> direct;
    for (const JudgedRoot& root : judged_)
      if (root.options_file.empty()) direct.push_back(root);
    std::size_t still_judged = first_added(direct);
    for (std::size_t i = 0; i < judged_.size(); ++i) {
      const bool only_judged = judged_[i].options_file.empty() && still_judged > 0;
      if (only_judged) --still_judged;
      if (judged_[i].accepted && !only_judged) story_.added.push_back(judged_[i]);
      const bool is_piece = i + 1 < judged_.size() && is_piece_of(judged_[i], judged_[i + 1]);
      if (!judged_[i].accepted && !is_piece) story_.rejected.push_back(judged_[i]);
    }
    judged_.clear();
  }

  std::string source_;
  std::string url_answer_;
  std::optional<std::string> pending_;
  JudgedRoot inside_options_;
  std::vector<JudgedRoot> judged_;
  std::vector<std::string> unparsed_;
  PathStory story_;
};

}  // namespace

bool cut_prefix(std::string_view& line, std::string_view prefix) {
  if (!line.starts_with(prefix)) return false;
  line.remove_prefix(prefix.size());
  return true;
}

std::size_t first_added(const std::vector<JudgedRoot>& judged) {
  for (std::size_t split = 0; split < judged.size(); ++split) {
    std::vector<std::string> expected;
    for (std::size_t i = 0; i < split; ++i) {
      if (!judged[i].accepted) continue;
      if (!expected.empty() && expected.back() == judged[i].path) break;
      expected.push_back(judged[i].path);
    }
    const auto same = [](const JudgedRoot& root, const std::string& path) { return root.path == path; };
    if (std::equal(judged.begin() + static_cast<std::ptrdiff_t>(split), judged.end(), expected.begin(),
                   expected.end(), same))
      return split;
  }
  return judged.size();
}

std::vector<JudgedRoot> rejected_by_split(const std::vector<std::string>& lines, const std::string& source) {
  StoryReader reader(source);
  for (const std::string& line : lines) {
    if (line.starts_with("olh_docList::GetOlhVariable: ")) break;
    reader.line(line);
  }
  reader.line("olh_docList::SetOlhDocPath: done");
  return std::move(reader).story({}).rejected;
}

PathStory read_path_story(const std::vector<std::string>& lines, const std::string& source) {
  StoryReader reader(source);
  for (const std::string& line : lines) reader.line(line);
  return std::move(reader).story(lines);
}

}  // namespace olh
