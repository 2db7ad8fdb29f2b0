// Where a PDF lies.
//
// Knows    its two places below a root, and the order in which they are tried.
// Not      the HTML form, which a URL root may hold instead (lookup_html).
// For      the lookup wrapper, and lookup_html, whose substitute a PDF is.
#include "bounded_text.h"
#include "lookup_common.h"
#include "olh/support.h"

namespace olh {

namespace {

int found(char* out, Candidate& location) noexcept {
  write_buffer(out, location.text());
  print_debug("olh_docList::FindPdfDoc: done\n");
  return 1;
}

int found_in_root(char* out, Candidate& location) noexcept {
  print_debug("olh_docList::FindPdfDoc: %s\n", location.text());
  return found(out, location);
}

// Looks in one root. FILE is `name` and `suffix`.
bool in_root(olh_docList& locator, Candidate& candidate, bool is_remote, std::string_view root, std::string_view name,
             std::string_view suffix) {
  for (const std::string_view set : {"/pdfdocs/", "/system_admin_docs/"}) {
    candidate.join({root, set, name, suffix});
    if (is_remote ? candidate.is_served(locator) : candidate.is_readable()) return true;
  }
  return false;
}

}  // namespace

}  // namespace olh

// FILE is the name, with ".pdf" added unless it ends so already. In this order:
//
//   1  a name with "/" or a backslash: that path itself, as it is
//   2  in each root:
//        a directory  ROOT/pdfdocs/FILE, ROOT/system_admin_docs/FILE
//        a URL        the same two, probed; then, with `fallback`, the HTML form in this root
//   3  FILE in the current directory
int olh_docList::FindPdfDoc(char* out, const char* name, char* viewerPath, int fallback) {
  print_debug("olh_docList::FindPdfDoc\n");
  if (out == nullptr || olh::is_empty(name)) {
    print_debug("olh_docList::FindPdfDoc: invalid arg\n");
    return 0;
  }
  olh::set_context(*this, nullptr);
  olh::Candidate candidate;
  if (olh::is_path_name(name)) {
    candidate.join({name});
    dirslash(candidate.text());
    if (candidate.is_readable()) return olh::found(out, candidate);
    olh::clear_buffer(out);
  }

  const std::string_view suffix = olh::ends_in_pdf(name) ? "" : ".pdf";
  for (OlhPathList* entry = mDocPathList; entry != nullptr; entry = entry->next) {
    if (!olh::enter_root(*this, "FindPdfDoc", name, *entry)) continue;
    const bool is_remote = is_url(entry->path) == 1;
    olh::prescribe_viewer("FindPdfDoc", viewerPath, is_remote ? entry->html : entry->pdf);
    if (olh::in_root(*this, candidate, is_remote, entry->path, name, suffix))
      return olh::found_in_root(out, candidate);
    if (is_remote && fallback == 1 && FindDocHelper(out, name, entry, viewerPath, olh::kHtmlForm) == 1) return 1;
  }

  candidate.join({name, suffix});
  if (candidate.is_readable()) return olh::found(out, candidate);
  olh::clear_buffer(out);
  print_debug("olh_docList::FindPdfDoc: failed\n");
  return 0;
}
