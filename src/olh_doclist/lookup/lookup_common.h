// What the lookups of documents and portals have in common: how they enter a root, and where a candidate is put
// together.
//
// Knows    that a lookup leaves the root it is in, and the viewer that this root prescribes, with its caller.
// Not      which candidates there are: each lookup has its list.
// For      lookup_pdf, lookup_html, lookup_portal, lookup_path.
#ifndef OLH_DOCLIST_LOOKUP_COMMON_H
#define OLH_DOCLIST_LOOKUP_COMMON_H

#include <initializer_list>
#include <string_view>

#include "olh_doclist.h"

namespace olh {

// A path or URL, put together in one buffer over and over: thousands of candidates cost no allocation. What does not
// fit leaves it empty, and an empty candidate is never there.
class Candidate {
 public:
  Candidate() noexcept { text_[0] = '\0'; }
  Candidate(std::initializer_list<std::string_view> parts) noexcept { join(parts); }

  void join(std::initializer_list<std::string_view> parts) noexcept;
  char* text() noexcept { return text_; }
  bool is_readable() const noexcept;
  // Whether a server has it. Turns backslashes into "/" first, as in every URL.
  bool is_served(olh_docList& locator);

 private:
  char text_[OLH_BUFFER_SIZE];
};

// Leaves the entry's root in mCurrentDocPath. Returns whether there is something to search: a root with a name.
// `method` heads the debug line.
bool enter_root(olh_docList& locator, const char* method, const char* name, const OlhPathList& entry) noexcept;

// Hands out the viewer that a root prescribes, "" when none.
void prescribe_viewer(const char* method, char* viewer_path, const char* program) noexcept;

// Makes mContext a copy of `name`; null for none.
void set_context(olh_docList& locator, const char* name);

// Whether a name holds a separator, so that it may be a path of its own.
bool is_path_name(std::string_view name) noexcept;

// Whether a name ends in ".pdf", in any mix of case.
bool ends_in_pdf(std::string_view name) noexcept;

// The form in which FindDocHelper looks.
enum LookupKind : int { kPdfForm = 0, kHtmlForm = 1 };

}  // namespace olh

#endif
