// The PDF reader launcher's instance and the functions through which everybody reaches it.
#include "acrobat_dde.h"

#include "boundary.h"
#include "olh/support.h"
#include "one_thread.h"

constinit OlhAcroDDE olhAcroDDENew;
constinit OlhAcroDDE* olhAcroDDE = nullptr;

void OlhAcroInitViewer() {
  // A first choice that memory ran out for is made again.
  if (olhAcroDDE != nullptr && olhAcroDDE->d_viewerPaths != nullptr) return;
  olhAcroDDE = &olhAcroDDENew;
  olhAcroDDE->setViewerDefaults(nullptr);
}

int OlhAcroIsViewerRunning(void) noexcept {
  const olh::OneThread inside;
  return olh::guarded(int{OLH_RESULT_FAILED}, [] {
    OlhAcroInitViewer();
    return olhAcroDDE->isViewerRunning();
  });
}

int OlhAcroViewerStart(const char* unused, const char* doc, const char* newlink, const char* viewer_path) noexcept {
  const olh::OneThread inside;
  return olh::guarded(int{OLH_RESULT_FAILED}, [&] {
    OlhAcroInitViewer();
    const int result = olhAcroDDE->startViewer(unused, doc, newlink, viewer_path);
    return result == OLH_RESULT_OK ? int{OLH_RESULT_OK} : int{OLH_RESULT_FAILED};
  });
}

int OlhAcroDocOpen(const char* doc, const char* newlink, const char* viewer_path) noexcept {
  const olh::OneThread inside;
  print_debug("OlhAcroDocOpen\n");
  const bool started = OlhAcroViewerStart(nullptr, doc, newlink, viewer_path) == OLH_RESULT_OK;
  print_debug("OlhAcroDocOpen: %s\n", started ? "done" : "failed");
  return started ? OLH_RESULT_OK : OLH_RESULT_IO;
}

int OlhAcroGetViewerPath(char* dst, const char* viewer_path) noexcept {
  const olh::OneThread inside;
  return olh::guarded(int{OLH_RESULT_NO_PROGRAM}, [&] {
    OlhAcroInitViewer();
    return olhAcroDDE->getViewerPath(dst, viewer_path);
  });
}

int OlhAcroSetPath(const char* path) noexcept {
  const olh::OneThread inside;
  return olh::guarded(int{OLH_RESULT_OK}, [&] {
    OlhAcroInitViewer();
    olhAcroDDE->setViewerDefaults(path);
    return int{OLH_RESULT_OK};
  });
}
