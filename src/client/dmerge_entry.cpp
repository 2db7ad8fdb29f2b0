// Making the document lists of a documentation root.
#include "olh/dmerge.h"

#include "bounded_text.h"
#include "entry_point.h"
#include "olh/support.h"

int OlhDmerge(const char* docRoot, OlhDmergeCallback callback) noexcept {
  const olh::EntryPoint call("OlhDmerge", docRoot);
  const char* root = olh::is_empty(docRoot) ? GetOlhDocPath() : docRoot;
  if (olh::is_empty(root)) return call.done(OLH_RESULT_NOT_FOUND);
  return call.done(dmerge(root, callback) == DMERGE_RESULT_OK ? OLH_RESULT_OK : OLH_RESULT_FAILED);
}
