// Where any other file lies that is known by its path below a root.
//
// Knows    that the path is appended to a root as it is, so that it begins with "/".
// For      the lookup wrapper.
#include "bounded_text.h"
#include "lookup_common.h"
#include "olh/support.h"

namespace {

bool in_root(olh_docList& locator, char* out, const char* root, const char* name) {
  olh::Candidate candidate({olh::text_of(root), name});
  const std::string_view text = candidate.text();
  if (text.starts_with("http://")) return locator.ValidURL(candidate.text()) == 1 && olh::write_buffer(out, text);
  if (!candidate.is_readable()) return false;
  olh::Candidate location({"file:///", text});
  return *location.text() != '\0' && olh::write_buffer(out, location.text());
}

}  // namespace

// In each root, ROOTNAME being the root followed by the name:
//
//   ROOTNAME              location
//   http://..., probed    ROOTNAME
//   any other, readable   file:///ROOTNAME
int olh_docList::FindPath(char* out, const char* name) {
  print_debug("olh_docList::FindPath\n");
  int result = 0;
  if (out != nullptr && name != nullptr)
    for (const OlhPathList* entry = mDocPathList; entry != nullptr && result == 0; entry = entry->next)
      result = in_root(*this, out, entry->path, name) ? 1 : 0;
  print_debug("olh_docList::FindPath: done\n");
  return result;
}
