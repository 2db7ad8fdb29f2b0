// The browser launcher's instance and the functions through which everybody reaches it.
#include "browser.h"

#include "boundary.h"
#include "olh/support.h"
#include "one_thread.h"

constinit OlhBrowser olhBrowserNew;
constinit OlhBrowser* olhBrowser = nullptr;

void OlhBrowserInit() {
  // A first choice that memory ran out for is made again.
  if (olhBrowser != nullptr && olhBrowser->d_viewerPaths != nullptr) return;
  olhBrowser = &olhBrowserNew;
  olhBrowser->setBrowserDefaults(nullptr);
}

int OlhBrowserRunning(void) noexcept {
  const olh::OneThread inside;
  return olh::guarded(int{OLH_RESULT_FAILED}, [] {
    OlhBrowserInit();
    return olhBrowser->isViewerRunning();
  });
}

int OlhBrowserOpenURL(const char* url, const char* viewer_path) noexcept {
  const olh::OneThread inside;
  return olh::guarded(int{OLH_RESULT_FAILED}, [&] {
    OlhBrowserInit();
    return olhBrowser->openURL(url, viewer_path);
  });
}

int OlhBrowserGetPath(char* dst, const char* viewer_path) noexcept {
  const olh::OneThread inside;
  return olh::guarded(int{OLH_RESULT_NO_PROGRAM}, [&] {
    OlhBrowserInit();
    return olhBrowser->getBrowserPath(dst, viewer_path);
  });
}

int OlhBrowserSetPath(const char* path) noexcept {
  const olh::OneThread inside;
  return olh::guarded(int{OLH_RESULT_OK}, [&] {
    OlhBrowserInit();
    olhBrowser->setBrowserDefaults(path);
    return int{OLH_RESULT_OK};
  });
}
