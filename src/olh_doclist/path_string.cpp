// Path strings: roots separated by ":", the URLs among them torn apart by the same ":".
//
// Knows    how elements are trimmed and how "http", "//host" and "8080/docs" become a URL again.
// Not      what makes an element a root (root_options), how it is linked (path_list).
// For      path_sources, root_options, and SetAltDocPath of this room.
//
//   string                   offered, in this order
//   /opt/docs/: /opt//b      /opt/docs, /opt/b
//   C:\docs                  C, /docs
//   http://h/docs            http, http://h/docs
//   http://h:8080/docs       http, http://h, and when that is rejected http://h:8080/docs, else 8080/docs
//   https://h/docs           https, /h/docs
#include "path_string.h"

#include <cstring>
#include <string>
#include <utility>

#include "bounded_text.h"
#include "directory_list.h"
#include "olh/support.h"

namespace olh {

namespace {

constexpr std::string_view kScheme = "http";
constexpr std::string_view kUrlStart = "http://";

std::string_view trimmed(std::string_view element) noexcept {
  const std::size_t first = element.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return element.substr(first, element.find_last_not_of(' ') - first + 1);
}

std::string without_repeated_slashes(std::string_view text) {
  std::string result(text.substr(0, text.starts_with(kUrlStart) ? kUrlStart.size() : 0));
  const std::size_t first = result.size();
  for (std::size_t i = first; i < text.size(); ++i)
    if (text[i] != '/' || i == first || text[i - 1] != '/') result += text[i];
  return result;
}

std::string normalised(std::string_view element) {
  std::string text(trimmed(element));
  dirslash(text.data());
  text.resize(std::strlen(text.c_str()));
  return without_repeated_slashes(text);
}

// Takes the elements of one string in order and remembers what an element may be the rest of.
class RootSplitter {
 public:
  RootSplitter(olh_docList& locator, const RootOrigin& origin, PathListEnd& end)
      : locator_(locator), origin_(origin), end_(end) {}

  void take(std::string candidate) {
    if (candidate == kScheme || candidate.starts_with(kUrlStart)) {
      after_scheme_ = true;
    } else if (after_scheme_) {
      // The "//" of the element has become "/".
      candidate.insert(0, "http:/");
      after_scheme_ = false;
      after_host_ = true;
      host_url_ = candidate;
    } else if (after_host_) {
      after_host_ = false;
      if (begins_with_digit(candidate)) candidate = std::exchange(host_url_, {}) + ':' + candidate;
    }
    offer(candidate);
  }

  int result() const noexcept { return result_; }

 private:
  static bool begins_with_digit(std::string_view text) noexcept {
    return !text.empty() && text.front() >= '0' && text.front() <= '9';
  }

  void offer(const std::string& candidate) {
    if (locator_.ValidDocPath(candidate.c_str()) != 1) {
      result_ = OLH_RESULT_NOT_FOUND;
      return;
    }
    if (!host_url_.empty()) {
      host_url_.clear();
      after_host_ = false;
    }
    end_.append(candidate, origin_.html, origin_.pdf, origin_.parent);
  }

  olh_docList& locator_;
  const RootOrigin& origin_;
  PathListEnd& end_;
  bool after_scheme_ = false;
  bool after_host_ = false;
  std::string host_url_;  // rejected by itself: the next element may be its port
  int result_ = OLH_RESULT_OK;
};

}  // namespace

int split_roots(olh_docList& locator, std::string_view paths, const RootOrigin& origin, PathListEnd& end) {
  RootSplitter splitter(locator, origin, end);
  for (const std::string_view element : split_directory_list(paths)) splitter.take(normalised(element));
  return splitter.result();
}

}  // namespace olh

//   in                out
//   /opt//docs///     /opt/docs/
//   http:////h//x     http:///h/x    the scheme stays as it is
void olh_docList::RemoveDuplicateSlash(char* in, char* out) {
  const std::string_view text = olh::text_of(in);
  olh::write_buffer(out, olh::without_repeated_slashes(text), text.size() + 1);
}

int olh_docList::SplitString(char* paths, char* html, char* pdf, OlhPathList*& list, char* parent) {
  olh::PathListEnd end(list);
  const olh::RootOrigin origin = {olh::text_of(html), olh::text_of(pdf), olh::text_of(parent)};
  return olh::split_roots(*this, olh::text_of(paths), origin, end);
}
