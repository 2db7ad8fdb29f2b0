// What the option files say, for those who ask for all of it at once.
//
// Knows    that a program which is no executable counts as not named, so that the caller falls back to its own.
// Not      how a file is loaded (option_dictionary), what a root's file adds to the search path (root_options).
// For      the wrappers: both launchers read the user's file here.
#include <unistd.h>

#include "bounded_text.h"
#include "olh/support.h"
#include "olh_doclist.h"
#include "option_dictionary.h"

namespace olh {

namespace {

// An absent key leaves the buffer as it was.
void copy_value(const OptionDictionary& options, const char* key, char* out) noexcept {
  if (const char* const value = options.value_of(key)) write_buffer(out, value);
}

void keep_program(char* program) noexcept {
  if (exe_exists(program) == 0) clear_buffer(program);
}

}  // namespace

}  // namespace olh

int olh_docList::ReadIniFile(char* fileName, char* altDocPath, char* htmlBrowser, char* pdfReader) {
  if (olh::is_empty(fileName) || access(fileName, F_OK) != 0) {
    olh::clear_buffer(htmlBrowser);
    olh::clear_buffer(pdfReader);
    return OLH_RESULT_NOT_FOUND;
  }
  const olh::OptionDictionary options(fileName);
  olh::copy_value(options, olh::kHtmlBrowserKey, htmlBrowser);
  olh::copy_value(options, olh::kPdfReaderKey, pdfReader);
  olh::copy_value(options, olh::kAltDocPathKey, altDocPath);
  olh::keep_program(htmlBrowser);
  olh::keep_program(pdfReader);
  return OLH_RESULT_OK;
}

int olh_docList::GetDocTreeViewerOverride(OlhViewer viewer, char* out) {
  if (mDocPathList == nullptr) olh::clear_buffer(out);
  if (mDocPathList != nullptr && viewer == OLH_VIEWER_HTML) olh::write_buffer(out, olh::text_of(mDocPathList->html));
  if (mDocPathList != nullptr && viewer == OLH_VIEWER_PDF) olh::write_buffer(out, olh::text_of(mDocPathList->pdf));
  return OLH_RESULT_OK;
}
