#include "lookup_common.h"

#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

#include "ascii_case.h"
#include "bounded_text.h"
#include "olh/support.h"
#include "owned_text.h"

namespace olh {

void Candidate::join(std::initializer_list<std::string_view> parts) noexcept {
  std::size_t size = 0;
  for (const std::string_view part : parts) {
    if (part.size() >= sizeof text_ - size) {
      text_[0] = '\0';
      return;
    }
    if (!part.empty()) std::memcpy(text_ + size, part.data(), part.size());
    size += part.size();
  }
  text_[size] = '\0';
}

bool Candidate::is_readable() const noexcept { return path_exists(text_) == 1; }

bool Candidate::is_served(olh_docList& locator) {
  urlslash(text_);
  return text_[0] != '\0' && locator.ValidURL(text_) == 1;
}

bool enter_root(olh_docList& locator, const char* method, const char* name, const OlhPathList& entry) noexcept {
  const char* const root = entry.path == nullptr ? "" : entry.path;
  print_debug("olh_docList::%s: Looking for %s at: %s\n", method, name, root);
  return write_buffer(locator.mCurrentDocPath, root) && *root != '\0';
}

void prescribe_viewer(const char* method, char* viewer_path, const char* program) noexcept {
  write_buffer(viewer_path, text_of(program));
  if (!is_empty(program)) print_debug("olh_docList::%s: viewer override: %s\n", method, program);
}

void set_context(olh_docList& locator, const char* name) {
  OwnedText context = name == nullptr ? OwnedText() : own_text(name);
  if (name != nullptr && context == nullptr) throw std::bad_alloc();
  std::free(std::exchange(locator.mContext, context.release()));
}

bool is_path_name(std::string_view name) noexcept { return name.find_first_of("/\\") != std::string_view::npos; }

bool ends_in_pdf(std::string_view name) noexcept { return ends_in_any_case(name, ".pdf"); }

namespace {

// Makes one root the whole search path, and puts the old one back whatever happens. The node is no copy but a second
// view of the same strings: a search changes none of them.
class SingleRoot {
 public:
  SingleRoot(olh_docList& locator, const OlhPathList& entry) noexcept
      : list_(locator.mDocPathList),
        node_{or_empty(entry.path), or_empty(entry.html), or_empty(entry.pdf), nullptr, or_empty(entry.parent)},
        saved_(std::exchange(list_, &node_)) {}
  SingleRoot(const SingleRoot&) = delete;
  SingleRoot& operator=(const SingleRoot&) = delete;
  ~SingleRoot() { list_ = saved_; }

 private:
  char* or_empty(char* text) noexcept { return text == nullptr ? empty_ : text; }

  char empty_[1] = {'\0'};
  OlhPathList*& list_;
  OlhPathList node_;
  OlhPathList* saved_;
};

}  // namespace

}  // namespace olh

int olh_docList::FindDocHelper(char* out, const char* name, OlhPathList*& entry, char* viewerPath, int kind) {
  if (entry == nullptr || (kind != olh::kPdfForm && kind != olh::kHtmlForm)) return 0;
  const olh::SingleRoot only(*this, *entry);
  return kind == olh::kPdfForm ? FindPdfDoc(out, name, viewerPath, 0) : FindHtmlDoc(out, name, viewerPath, 0);
}
