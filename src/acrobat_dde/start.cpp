// Starting the reader, for each document anew: a reader cannot be asked whether it runs.
#include <string>
#include <vector>

#include "acrobat_dde.h"
#include "bounded_text.h"
#include "detached_start.h"
#include "olh/support.h"
#include "viewer_argument.h"

namespace {

// The reader's command line, empty when it must not be run:
//   no document                    PROGRAM
//   a document at a destination    PROGRAM -openInNewWindow /a nameddest=DESTINATION DOCUMENT
//   a document                     PROGRAM DOCUMENT
std::vector<std::string> command_line(const char* program, const char* doc, const char* newlink) {
  if (!olh::fits(program)) return {};
  if (olh::is_empty(doc)) return {program};
  if (!olh::may_reach_a_viewer(doc)) return {};
  if (olh::is_empty(newlink)) return {program, doc};
  std::string destination = std::string("nameddest=") + newlink;
  if (!olh::may_reach_a_viewer(destination)) return {};
  return {program, "-openInNewWindow", "/a", std::move(destination), doc};
}

// The reader to start, null when there is none. The first of:
//   1. the user's choice
//   2. the program that the documentation prescribes
//   3. the program found before
//   4. the program found by searching now, which is remembered as the third
const char* choose_program(OlhAcroDDE& reader, const char* viewer_path) {
  if (reader.d_viewerPaths == nullptr) reader.setViewerDefaults(nullptr);
  OlhViewerPaths& paths = *reader.d_viewerPaths;
  if (!olh::is_empty(paths.overridePath)) {
    print_debug("startViewer: using pdf viewer override: %s\n", paths.overridePath);
    return paths.overridePath;
  }
  if (!olh::is_empty(viewer_path)) {
    print_debug("startViewer: using pdf viewer from qel_doc_options.ini: %s\n", viewer_path);
    return viewer_path;
  }
  if (!olh::is_empty(paths.defaultPath)) {
    print_debug("startViewer: using default pdf viewer: %s\n", paths.defaultPath);
    return paths.defaultPath;
  }
  reader.locateViewer();
  if (olh::is_empty(reader.d_acroViewerExePath.get())) {
    print_debug("startViewer: pdf viewer not found\n");
    return nullptr;
  }
  olh::replace_path(paths.defaultPath, reader.d_acroViewerExePath.get());
  print_debug("startViewer: using default pdf viewer (d_acroViewerExePath): %s\n", paths.defaultPath);
  return paths.defaultPath;
}

int failed(int result) {
  print_debug("startViewer: failed\n");
  return result;
}

}  // namespace

int OlhAcroDDE::isViewerRunning() { return OLH_RESULT_FAILED; }

int OlhAcroDDE::startViewer(const char*, const char* doc, const char* newlink, const char* viewer_path) {
  const char* const program = choose_program(*this, viewer_path);
  if (program == nullptr) return OLH_RESULT_NO_PROGRAM;
  const std::vector<std::string> words = command_line(program, doc, newlink);
  if (words.empty()) return failed(OLH_RESULT_FAILED);
  const olh::DetachedStart start = olh::start_detached(words);
  if (start.outcome == olh::StartOutcome::kFailed) return failed(start.status);
  if (start.outcome != olh::StartOutcome::kStarted) return failed(OLH_RESULT_FAILED);
  print_debug("startViewer: done\n");
  return OLH_RESULT_OK;
}
