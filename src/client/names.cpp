#include "names.h"

#include "olh/olh.h"

const char* const olhViewerNames[] = {"OLH_VIEWER_TOMEDECK", "OLH_VIEWER_DEFAULT", "OLH_VIEWER_PDF",
                                      "OLH_VIEWER_HTML", nullptr};

const char* const olhDisplayTypeNames[] = {"OLH_DISPLAY_NORMAL", "OLH_DISPLAY_TOPIC", "OLH_DISPLAY_POPUP", nullptr};

const char* OlhViewer_toString(int viewer) noexcept {
  if (viewer < OLH_VIEWER_TOMEDECK || viewer > OLH_VIEWER_HTML) return "";
  return olhViewerNames[viewer - OLH_VIEWER_TOMEDECK];
}

const char* OlhDisplayType_toString(int type) noexcept {
  if (type < OLH_DISPLAY_NORMAL || type > OLH_DISPLAY_POPUP) return "";
  return olhDisplayTypeNames[type];
}
