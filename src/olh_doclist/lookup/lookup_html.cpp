// Where an HTML manual's start page lies.
//
// Knows    the forms that a manual has below a root, and the names that are locations already.
// Not      where PDFs lie (lookup_pdf), which are the substitute in each root.
// For      the lookup wrapper, and lookup_pdf, whose substitute behind a URL a manual is.
#include <unistd.h>

#include "bounded_text.h"
#include "lookup_common.h"
#include "olh/support.h"
#include "url_build.h"

namespace olh {

namespace {

int done(int result) noexcept {
  print_debug("olh_docList::FindHtmlDoc: done\n");
  return result;
}

int found_in_root(const char* out) noexcept {
  print_debug("olh_docList::FindHtmlDoc: %s\n", out);
  return done(1);
}

// Writes a location as a URL. Returns false when it does not fit: then it counts as not there.
bool hand_out(char* out, std::initializer_list<std::string_view> parts) noexcept {
  Candidate location(parts);
  urlslash(location.text());
  return write_buffer(out, location.text()) && *out != '\0';
}

// A name that is a path: its start page when it is a directory that has one, else the path itself.
bool at_given_path(char* out, Candidate& candidate, const char* name) noexcept {
  candidate.join({name});
  dirslash(candidate.text());
  if (!candidate.is_readable()) return false;
  Candidate page({candidate.text(), "/index.htm"});
  return (page.is_readable() && hand_out(out, {kFileScheme, page.text()})) ||
         hand_out(out, {kFileScheme, candidate.text()});
}

bool in_url_root(olh_docList& locator, Candidate& candidate, char* out, std::string_view manual) {
  const std::string_view root = locator.mCurrentDocPath;
  candidate.join({root, "/htmldocs/", manual, "/index.htm"});
  if (candidate.is_served(locator)) return write_buffer(out, candidate.text());
  candidate.join({root, "/tomedecks/", manual, "/index.html"});
  return candidate.is_served(locator) && write_buffer(out, candidate.text());
}

bool in_directory_root(const char* root, Candidate& candidate, char* out, std::string_view manual) noexcept {
  candidate.join({root, "/htmldocs/", manual, "/index.htm"});
  if (candidate.is_readable() && hand_out(out, {kFileScheme, candidate.text()})) return true;
  candidate.join({root, "/htmldocs/", manual, "/", manual, ".htm"});
  if (candidate.is_readable() && hand_out(out, {kFileScheme, candidate.text()})) return true;
  candidate.join({root, "/tomedecks/", manual, "/index.html"});
  return candidate.is_readable() && hand_out(out, {kFileScheme, candidate.text()});
}

bool in_root(olh_docList& locator, Candidate& candidate, char* out, std::string_view manual) {
  const char* const root = locator.mCurrentDocPath;
  return is_url(root) == 1 ? in_url_root(locator, candidate, out, manual)
                           : in_directory_root(root, candidate, out, manual);
}

bool in_current_directory(char* out, const char* name) noexcept {
  if (path_exists(name) == 0 || ends_in_pdf(name)) return false;
  char directory[OLH_BUFFER_SIZE];
  if (getcwd(directory, sizeof directory) == nullptr || *directory == '\0') return false;
  return hand_out(out, {kFileScheme, directory, "/", name});
}

}  // namespace

}  // namespace olh

// MANUAL is the name without a ".pdf" at its end. In this order:
//
//   1  a URL: itself, not tested
//   2  a name with "/" or a backslash: PATH/index.htm when PATH and this page are there, else PATH when it is there
//   3  in each root:
//        a directory  ROOT/htmldocs/MANUAL/index.htm, ROOT/htmldocs/MANUAL/MANUAL.htm,
//                     ROOT/tomedecks/MANUAL/index.html
//        a URL        ROOT/htmldocs/MANUAL/index.htm, ROOT/tomedecks/MANUAL/index.html, both probed
//        then, with `fallback`, the PDF form in this root
//   4  the name in the current directory, unless it ends in ".pdf"
//
// All locations are URLs: what is found on this machine gets "file://" in front.
int olh_docList::FindHtmlDoc(char* out, const char* name, char* viewerPath, int fallback) {
  print_debug("olh_docList::FindHtmlDoc\n");
  if (out == nullptr || olh::is_empty(name)) {
    print_debug("olh_docList::FindHtmlDoc: invalid arg\n");
    return 0;
  }
  olh::set_context(*this, nullptr);
  if (is_url(name) == 1 && olh::hand_out(out, {name})) {
    olh::set_context(*this, name);
    return olh::done(1);
  }
  olh::Candidate candidate;
  if (olh::is_path_name(name) && olh::at_given_path(out, candidate, name)) return olh::done(1);

  std::string_view manual = name;
  if (olh::ends_in_pdf(manual)) manual.remove_suffix(4);
  for (OlhPathList* entry = mDocPathList; entry != nullptr; entry = entry->next) {
    const bool has_name = olh::enter_root(*this, "FindHtmlDoc", name, *entry);
    olh::prescribe_viewer("FindHtmlDoc", viewerPath, entry->html);
    if (has_name && olh::in_root(*this, candidate, out, manual)) return olh::found_in_root(out);
    olh::prescribe_viewer("FindHtmlDoc", viewerPath, entry->pdf);
    if (fallback == 1 && FindDocHelper(out, name, entry, viewerPath, olh::kPdfForm) == 1)
      return olh::found_in_root(out);
  }

  if (olh::in_current_directory(out, name)) return olh::found_in_root(out);
  olh::clear_buffer(out);
  return olh::done(0);
}
