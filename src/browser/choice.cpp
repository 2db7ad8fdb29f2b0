// Which browser: the user's choice, the program that the documentation prescribes, the one found by searching.
#include <string>
#include <string_view>

#include "bounded_text.h"
#include "browser.h"
#include "directory_list.h"
#include "environment.h"
#include "olh/support.h"

namespace {

using olh::ChoiceSource;

void log_choice(const olh::UserChoice& choice) {
  if (choice.source == ChoiceSource::kOptionsFile)
    print_debug("OlhBrowser::setBrowserDefaults: %s: %s\n", olh::kViewerOptionsName, choice.program.c_str());
  if (choice.source == ChoiceSource::kVariable)
    print_debug("OlhBrowser::setBrowserDefaults: QEL_HTML_BROWSER: %s\n", choice.program.c_str());
}

olh::ViewerPaths first_choice(OlhBrowser& browser) {
  olh::ViewerPaths paths = olh::make_viewer_paths();
  const olh::UserChoice choice = olh::user_choice(OLH_VIEWER_HTML);
  log_choice(choice);
  if (choice.source != ChoiceSource::kNone) olh::replace_path(paths->overridePath, choice.program.c_str());
  std::string found(OLH_BUFFER_SIZE, '\0');
  if (browser.getDefaultBrowser(found.data()) == 0) olh::replace_path(paths->defaultPath, found.c_str());
  return paths;
}

// Remembers the first candidate of a name that can be read.
void remember_readable(std::string& remembered, std::string_view directory, std::string_view name) {
  if (!remembered.empty()) return;
  std::string candidate = olh::path_in(directory, name);
  if (olh::fits(candidate) && path_exists(candidate.c_str()) == 1) remembered = std::move(candidate);
}

}  // namespace

// In this order:
//   1. the first "firefox" that can be executed
//   2. the first "mozilla" that can be read
//   3. the first "netscape" that can be read
std::string olh::search_browser(std::string_view directories) {
  std::string mozilla;
  std::string netscape;
  for (const std::string_view directory : split_directory_list(directories)) {
    std::string firefox = path_in(directory, "firefox");
    if (fits(firefox) && exe_exists(firefox.c_str()) == 1) return firefox;
    remember_readable(mozilla, directory, "mozilla");
    remember_readable(netscape, directory, "netscape");
  }
  return mozilla.empty() ? netscape : mozilla;
}

void OlhBrowser::setBrowserDefaults(const char* path) {
  print_debug("OlhBrowser::setBrowserDefaults\n");
  if (d_viewerPaths == nullptr)
    d_viewerPaths = first_choice(*this);
  else if (!olh::is_empty(path))
    olh::replace_path(d_viewerPaths->overridePath, path);
  print_debug("OlhBrowser::setBrowserDefaults: done\n");
}

int OlhBrowser::getDefaultBrowser(char* dst) {
  constexpr int kNotFound = -1;
  print_debug("OlhBrowser::getDefaultBrowser\n");
  const std::string directories = std::string(olh::text_of(olh::program_directories())) + ":/usr/bin:/usr/local/bin";
  const std::string found = olh::search_browser(directories);
  if (!olh::write_buffer(dst, found) || found.empty()) {
    print_debug("OlhBrowser::getDefaultBrowser: failed\n");
    return kNotFound;
  }
  print_debug("OlhBrowser::getDefaultBrowser: %s\n", found.c_str());
  return 0;
}

int OlhBrowser::getBrowserPath(char* dst, const char* viewer_path) {
  return olh::copy_program_in_use(dst, d_viewerPaths.get(), viewer_path);
}
