// A run of the generator: its steps, in their order.
//
// Knows    which step follows which, and that a run leaves no record behind.
// Not      what a step does (portal_list, document_lists, library_extraction, library_available).
// For      OlhDmerge, and hosts that call dmerge themselves.
#include <cstdio>
#include <string>

#include "boundary.h"
#include "bounded_text.h"
#include "one_thread.h"
#include "paths.h"
#include "registries.h"

namespace {

int run(const std::string& root) {
  if (root.empty()) return DMERGE_RESULT_FAILED;
  doc_root = olh::copied(olh::clean_path({root}));
  if (pathExists(doc_root) == 0) {
    std::printf("%s: Error: path '%s' not found.\n", "dmerge", root.c_str());
    return DMERGE_RESULT_FAILED;
  }
  // The order matters: the release name of the first step goes into the basic page of the third, and the titles of
  // the second into the third's lists.
  int result = generateTdInstalledList(doc_root);
  if (result == DMERGE_RESULT_OK) result = generateDocLists(doc_root);
  if (result == DMERGE_RESULT_OK) result = extractLibList(doc_root);
  if (result == DMERGE_RESULT_OK) result = writeLibAvail(doc_root);
  return result;
}

}  // namespace

int dmerge(const char* root, OlhDmergeCallback callback) noexcept {
  const olh::OneThread inside;
  const int result = olh::guarded(int{DMERGE_RESULT_FAILED}, [root, callback] {
    const std::string own_root(olh::text_of(root));  // a host may hand in the doc_root that dmerge_init frees
    dmerge_init();
    dmergeCallback = callback;
    return run(own_root);
  });
  dmerge_free();
  return result;
}

void dmerge_init() noexcept {
  const olh::OneThread inside;
  dmerge_free();
  dmergeCallback = nullptr;
}

void dmerge_free() noexcept {
  const olh::OneThread inside;
  olh::discard(doc_root);
  olh::discard(releaseName);
  clearLibList();
  clearFoundList();
  clearRegisteredFiles();
  clearpdfTitlesList();
}
