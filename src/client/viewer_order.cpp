// Choosing the viewer and the order of lookups, and asking whether a viewer runs.
#include "viewer_order.h"

#include <string_view>

#include "ascii_case.h"
#include "bounded_text.h"
#include "entry_point.h"
#include "names.h"
#include "olh/support.h"
#include "one_thread.h"

int current_viewer = OLH_VIEWER_HTML;
int viewerOrder[2] = {OLH_VIEWER_HTML, OLH_VIEWER_PDF};

namespace {

constexpr int kRunning = 0;

// The viewers that an order string names, each once, the preferred one first.
struct NamedViewers {
  int viewer[2] = {};
  int count = 0;

  void add(int candidate) noexcept {
    if (count == 0 || (count == 1 && viewer[0] != candidate)) viewer[count++] = candidate;
  }
};

// "html", "htm" and "pdf" count in a list; what else stands between the colons is passed over.
NamedViewers viewers_in_list(std::string_view list) noexcept {
  NamedViewers named;
  while (true) {
    const std::size_t end = list.find(':');
    const std::string_view field = list.substr(0, end);
    if (field == "pdf") named.add(OLH_VIEWER_PDF);
    if (field == "html" || field == "htm") named.add(OLH_VIEWER_HTML);
    if (end == std::string_view::npos) return named;
    list.remove_prefix(end + 1);
  }
}

// A string without a colon names one viewer, and "htm" is not one.
NamedViewers viewers_in(std::string_view order) noexcept {
  if (order.find(':') != std::string_view::npos) return viewers_in_list(order);
  NamedViewers named;
  if (order == "html") named.add(OLH_VIEWER_HTML);
  if (order == "pdf") named.add(OLH_VIEWER_PDF);
  return named;
}

void move_to_front(int viewer) noexcept {
  if (viewerOrder[1] == viewer) viewerOrder[1] = viewerOrder[0];
  viewerOrder[0] = viewer;
  current_viewer = viewer;
}

void restore_configured_order() noexcept {
  char order[OLH_BUFFER_SIZE];
  if (GetOlhVariable(order, "QEL_DOC_TYPE") != 0 && OlhSetViewerOrder(order) == OLH_RESULT_OK) return;
  viewerOrder[0] = OLH_VIEWER_HTML;
  viewerOrder[1] = OLH_VIEWER_PDF;
  current_viewer = OLH_VIEWER_HTML;
}

}  // namespace

int OlhGetCurrentViewer() noexcept {
  const olh::OneThread inside;
  return current_viewer;
}

int OlhSetViewer(OlhViewer viewer, int start) noexcept {
  const olh::EntryPoint call("OlhSetViewer", OlhViewer_toString(viewer));
  if (viewer == OLH_VIEWER_DEFAULT) {
    restore_configured_order();
    return call.done(OLH_RESULT_OK);
  }
  move_to_front(viewer);
  const bool can_start = viewer == OLH_VIEWER_PDF || viewer == OLH_VIEWER_HTML;
  if (start != 0 && can_start && isViewerRunning(viewer) != kRunning) startViewer();
  return call.done(OLH_RESULT_OK);
}

int OlhSetViewerOrder(const char* order) noexcept {
  const olh::EntryPoint call("OlhSetViewerOrder", order);
  char lowered[OLH_BUFFER_SIZE];
  if (olh::is_empty(order) || !olh::write_buffer(lowered, order)) return call.failed(OLH_RESULT_INVALID);
  olh::lower_ascii(lowered);
  const NamedViewers named = viewers_in(lowered);
  // Each one moves to the front, so the last named goes first and the preferred one ends there.
  for (int i = named.count - 1; i >= 0; --i) OlhSetViewer(named.viewer[i], 0);
  current_viewer = viewerOrder[0];
  return call.done(named.count > 0 ? OLH_RESULT_OK : OLH_RESULT_INVALID);
}

int OlhIsViewerRunning(OlhViewer viewer) noexcept {
  const olh::EntryPoint call("OlhIsViewerRunning", OlhViewer_toString(viewer));
  return call.done(isViewerRunning(viewer));
}
