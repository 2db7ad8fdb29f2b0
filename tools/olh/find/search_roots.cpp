#include "search_roots.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <optional>

#include "files.h"
#include "olh/support.h"
#include "shared.h"

namespace olh {

namespace {

constexpr const char* kOverrides = "QEL_OVERRIDE_DOC_PATH";

// Longer than a file name may be, and than the URL that a probe takes: asked for it, a lookup opens no connection.
std::string name_of_nothing() { return std::string(600, 'x'); }

// Reads the roots and their overrides out of the lines of one HTML lookup. For each root it tells its own browser and
// reader in turn, each only when there is one, and then begins the PDF lookup, which tells the reader of a directory
// and the browser of a URL once more: so it is known which of the two a lone line named.
class WalkReader {
 public:
  void line(std::string_view text) {
    if (cut_prefix(text, "olh_docList::FindHtmlDoc: Looking for " + name_of_nothing() + " at: ")) {
      settle();
      roots_.emplace_back().path = text;
    } else if (cut_prefix(text, "olh_docList::FindHtmlDoc: viewer override: ")) {
      prescribed_.emplace_back(text);
    } else if (text.starts_with("olh_docList::FindPdfDoc: viewer override: ")) {
      said_again_ = true;
    }
  }

  std::vector<SearchRoot> roots() && {
    settle();
    return std::move(roots_);
  }

 private:
  void settle() {
    if (!roots_.empty() && !prescribed_.empty()) {
      SearchRoot& root = roots_.back();
      const bool lone_is_reader = is_web_root(root.path) != said_again_;
      if (prescribed_.size() > 1 || !lone_is_reader) root.browser = prescribed_.front();
      if (prescribed_.size() > 1 || lone_is_reader) root.reader = prescribed_.back();
    }
    prescribed_.clear();
    said_again_ = false;
  }

  std::vector<SearchRoot> roots_;
  std::vector<std::string> prescribed_;
  bool said_again_ = false;
};

std::vector<SearchRoot> walk_along_roots() {
  std::array<char, OLH_BUFFER_SIZE> location{};
  std::array<char, OLH_BUFFER_SIZE> viewer{};
  const auto lines = debug_lines_of([&] { FindHtmlDoc(location.data(), name_of_nothing().c_str(), viewer.data()); });
  WalkReader reader;
  for (const std::string& line : lines) reader.line(line);
  return std::move(reader).roots();
}

// The order in which the parts of the search path follow each other.
int rank(const JudgedRoot& root) { return root.source == kOverrides ? 0 : root.source == kRootOption ? 1 : 2; }

void append(PathStory& story, PathStory more) {
  const auto move_all = [](auto& from, auto& to) { std::move(from.begin(), from.end(), std::back_inserter(to)); };
  move_all(more.added, story.added);
  move_all(more.rejected, story.rejected);
  move_all(more.spoilt, story.spoilt);
}

// What the variable for the roots of packages is while the search path comes about; nothing where it can stay as it is.
std::optional<std::string> with_own_root(const std::string& own) {
  const std::string stated = variable(kSystemRoots);
  const bool is_refused = stated.empty() && std::getenv(kSystemRoots) != nullptr;
  const auto known = olh_viewers::pieces_of(stated, ':');
  if (own.empty() || is_refused || std::find(known.begin(), known.end(), own) != known.end()) return std::nullopt;
  return stated.empty() ? own : stated + ":" + own;
}

// A person names directories from where he stands; what a viewer gets must hold anywhere. "docs:http://host:80/d" has
// four pieces, of which only the first is a directory.
std::string with_whole_paths(const std::string& host_roots) {
  std::string whole;
  std::string before;
  for (const std::string& piece : olh_viewers::pieces_of(host_roots, ':')) {
    std::error_code error;
    const bool is_relative = !piece.empty() && piece[0] != '/' && !before.starts_with("//");
    const std::filesystem::path path = std::filesystem::absolute(piece, error).lexically_normal();
    const bool is_named_from_here = is_relative && std::filesystem::is_directory(path, error);
    whole += (whole.empty() ? "" : ":") + (is_named_from_here ? path.string() : piece);
    before = piece;
  }
  return whole;
}

void annotate(SearchRoot& root, const std::vector<JudgedRoot>& added) {
  bool is_first = true;
  for (const JudgedRoot& one : added) {
    if (one.path != root.path) continue;
    if (is_first) {
      root.source = one.source;
      root.parent = one.parent;
      if (!one.parent.empty()) root.options_file = one.options_file;
    }
    is_first = false;
    if (root.browser_from.empty() && !root.browser.empty() && one.browser == root.browser)
      root.browser_from = one.options_file;
    if (root.reader_from.empty() && !root.reader.empty() && one.reader == root.reader)
      root.reader_from = one.options_file;
  }
}

}  // namespace

SearchRoots find_search_roots(const std::string& host_roots) {
  const std::string own = own_root();
  const std::optional<std::string> wanted = with_own_root(own);
  std::optional<VariableForNow> system_roots;
  if (wanted) system_roots.emplace(kSystemRoots, *wanted);
  PathStory story = read_path_story(debug_lines_of([] { OlhDocListInit(); }), "");
  SearchRoots result;
  result.preferred = OlhGetCurrentViewer();
  if (!host_roots.empty()) {
    const std::string whole = with_whole_paths(host_roots);
    append(story, read_path_story(debug_lines_of([&] { OlhSetDocPath(whole.c_str()); }), kRootOption));
  }
  std::stable_sort(story.added.begin(), story.added.end(),
                   [](const JudgedRoot& a, const JudgedRoot& b) { return rank(a) < rank(b); });
  result.roots = walk_along_roots();
  for (SearchRoot& root : result.roots) {
    annotate(root, story.added);
    if (wanted && root.path == own && root.source == kSystemRoots) root.source = kOwnSource;
  }
  result.rejected = std::move(story.rejected);
  result.spoilt = std::move(story.spoilt);
  return result;
}

std::vector<std::string> paths_of(const SearchRoots& roots) {
  std::vector<std::string> paths;
  for (const SearchRoot& root : roots.roots) paths.push_back(root.path);
  return paths;
}

std::string tree_options_file(const SearchRoots& roots) {
  const SearchRoot& first = roots.roots.front();
  return (first.parent.empty() ? first.path : first.parent) + "/qel_doc_options.ini";
}

}  // namespace olh
