// The locator's exported functions: convert, call, convert back.
//
// Knows    the one instance, and that the environment is read before the first call does its work.
// Not      what any of the functions does: each stands in the file of the method that it calls.
// Owns     the instance. It is born while the library is loaded and dies at exit or when the library is unloaded.
// For      hosts and every other room.
#include "boundary.h"
#include "olh/support.h"
#include "olh_doclist.h"
#include "one_thread.h"
#include "search_path_change.h"

namespace {

olh_docList docListNew;
olh_docList* docList = nullptr;
int docListInited = 0;

// Returns false when memory is exhausted; the search path is then as it was.
bool gather_first_search_path() noexcept {
  return olh::guarded(false, [] {
    olh::SearchPathChange change(*docList, olh::SearchPathChange::Also::kEnvironmentLists);
    olh::gather_search_path(*docList, change.host_roots());
    change.keep();
    return true;
  });
}

// The flag comes first: the steps call entry points that begin here themselves. Roots that there was no memory for are
// gathered at the next call.
void docListInit() noexcept {
  if (docListInited == 1) return;
  docListInited = 1;
  const bool is_first_call = docList == nullptr;
  docList = &docListNew;
  const bool has_roots = gather_first_search_path();
  if (is_first_call) olh::guarded([] { docList->CheckOlhVariables(); });
  if (!has_roots) docListInited = 0;
}

// Runs `call` on the instance after first use; `failure` is the result when memory is exhausted.
template <class Call>
int forward(int failure, Call&& call, const char* caller = __builtin_FUNCTION()) noexcept {
  const olh::OneThread inside(caller);
  docListInit();
  return olh::guarded(failure, [&call] { return call(*docList); });
}

constexpr int kNotFound = 0;  // the lookups answer 1 or 0
constexpr int kDone = 1;

}  // namespace

void OlhDocListInit() noexcept {
  const olh::OneThread inside;
  docListInit();
}

int GetOlhVariable(char* value, const char* name) noexcept {
  return forward(kNotFound, [=](olh_docList& list) { return list.GetOlhVariable(value, name); });
}

void SetOlhDisplayType(int type) noexcept {
  const olh::OneThread inside;
  docListInit();
  if (docList->mbDisplayTypeFixed != 1) docList->mDisplayType = type;
}

int GetOlhDisplayType() noexcept {
  const olh::OneThread inside;
  docListInit();
  return docList->mDisplayType;
}

int SetOlhDocPath(const char* paths) noexcept {
  return forward(kDone, [=](olh_docList& list) { return list.SetOlhDocPath(paths); });
}

const char* GetOlhDocPath() noexcept {
  const olh::OneThread inside;
  docListInit();
  return docList->mDocPathList == nullptr ? nullptr : docList->mDocPathList->path;
}

int FindPdfDoc(char* out, const char* name, char* viewerPath) noexcept {
  return forward(kNotFound, [=](olh_docList& list) { return list.FindPdfDoc(out, name, viewerPath, 1); });
}

int FindHtmlDoc(char* out, const char* name, char* viewerPath) noexcept {
  return forward(kNotFound, [=](olh_docList& list) { return list.FindHtmlDoc(out, name, viewerPath, 1); });
}

int FindTomeDeck(char* out, const char* name, char* viewerPath) noexcept {
  return forward(kNotFound, [=](olh_docList& list) { return list.FindTomeDeck(out, name, viewerPath); });
}

int FindPath(char* out, const char* name) noexcept {
  return forward(kNotFound, [=](olh_docList& list) { return list.FindPath(out, name); });
}

int FindHtmlTopic(const char* docLocation, const char* topic, char* out) noexcept {
  return forward(kNotFound, [=](olh_docList& list) { return list.FindHtmlTopic(docLocation, topic, out); });
}

int showDocGotoTag(const char* doc, const char* tag, char* viewer_path) noexcept {
  return forward(OLH_RESULT_FAILED, [=](olh_docList& list) { return list.showDocGotoTag(doc, tag, viewer_path); });
}

int HtmlSearch(const char* query, const char* scope, const char* name) noexcept {
  return forward(OLH_RESULT_FAILED, [=](olh_docList& list) { return list.HtmlSearch(query, scope, name); });
}

void FormatTopic(char* topic) noexcept {
  const olh::OneThread inside;
  docListInit();
  olh::guarded([topic] { docList->FormatTopic(topic); });
}

int isViewerRunning(int viewer) noexcept {
  return forward(OLH_RESULT_FAILED, [=](olh_docList& list) { return list.isViewerRunning(viewer); });
}

int startViewer() noexcept {
  return forward(OLH_RESULT_FAILED, [](olh_docList& list) { return list.startViewer(); });
}

int exitViewer() noexcept {
  return forward(OLH_RESULT_FAILED, [](olh_docList& list) { return list.exitViewer(); });
}

int SetIniFile(int key, const char* value, int file) noexcept {
  return forward(OLH_RESULT_IO, [=](olh_docList& list) { return list.SetIniFile(key, value, file); });
}

int ReadIniFile(char* fileName, char* altDocPath, char* htmlBrowser, char* pdfReader) noexcept {
  return forward(OLH_RESULT_NOT_FOUND,
                 [=](olh_docList& list) { return list.ReadIniFile(fileName, altDocPath, htmlBrowser, pdfReader); });
}

int GetHomeDirectory(char* out) noexcept {
  return forward(kNotFound, [=](olh_docList& list) { return list.GetHomeDirectory(out); });
}

int GetDocTreeViewerOverride(int viewer, char* out) noexcept {
  return forward(OLH_RESULT_OK, [=](olh_docList& list) { return list.GetDocTreeViewerOverride(viewer, out); });
}

int SetAltViewerPath(int viewer, const char* path) noexcept {
  return forward(OLH_RESULT_IO, [=](olh_docList& list) { return list.SetAltViewerPath(viewer, path); });
}

int GetAltDocPath(char* out) noexcept {
  return forward(OLH_RESULT_IO, [=](olh_docList& list) { return list.GetAltDocPath(out); });
}

int SetAltDocPath(const char* paths) noexcept {
  return forward(OLH_RESULT_IO, [=](olh_docList& list) { return list.SetAltDocPath(paths); });
}

int search_path(char* out, const char* program, const char* envName) noexcept {
  return forward(kNotFound, [=](olh_docList& list) { return list.search_path(out, program, envName); });
}
