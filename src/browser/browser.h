// The HTML browser launcher: the one object that chooses the browser, asks it, and starts it.
//
// Knows    the browser's command lines and the order of the steps; a file of this room for each concern.
// Not      where the URL comes from (olh_doclist), nor what an option file looks like.
// Owns     the record of the two known programs.
// For      this room. Everybody else comes through the functions of olh/support.h (browser.cpp).
#ifndef OLH_BROWSER_BROWSER_H
#define OLH_BROWSER_BROWSER_H

#include <string>
#include <string_view>

#include "viewer_choice.h"

class OlhBrowser {
 public:
  constexpr OlhBrowser() noexcept = default;
  OlhBrowser(const OlhBrowser&) = delete;
  OlhBrowser& operator=(const OlhBrowser&) = delete;

  // choice: the programs known and found
  void setBrowserDefaults(const char* path);
  int getDefaultBrowser(char* dst);
  int getBrowserPath(char* dst, const char* viewer_path);

  // remote: is a browser running?
  int isViewerRunning();
  int mozRemotePing(char* browser);

  // show
  int openURL(const char* url, const char* viewer_path);
  int startBrowser(const char* url, const char* arg, const char* browser);

  olh::ViewerPaths d_viewerPaths;  // null until the first setBrowserDefaults
};

// The instance, and the pointer to it once OlhBrowserInit has run.
extern OlhBrowser olhBrowserNew;
extern OlhBrowser* olhBrowser;

// Makes the first choice of programs, unless that has happened.
void OlhBrowserInit();

namespace olh {

// choice: the browser to use without anybody's choice, from a list of directories; "" when there is none.
std::string search_browser(std::string_view directories);

// remote: has the running browser show a URL. Returns whether it has.
bool open_in_running_browser(const char* url, const char* browser);

}  // namespace olh

#endif
