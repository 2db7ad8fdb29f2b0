// A machine on which help can be shown: a documentation root in the environment, and a browser that runs and notes
// every URL that it is handed (without the two seconds that starting a viewer takes).
#ifndef OLH_TESTS_HELP_SCENE_H
#define OLH_TESTS_HELP_SCENE_H

#include <string>

#include "acrobat_dde.h"
#include "browser.h"
#include "olh/support.h"
#include "scratch.h"

namespace olh_test {

// A page of the support portal, as shown_urls has it; nothing in a build that has none.
inline std::string support_page(const std::string& page) {
  const std::string portal = OLH_SUPPORT_PORTAL_URL;
  return portal.empty() ? "" : portal + page + "\n";
}

class HelpScene : public Scratch {
 protected:
  HelpScene() : root(make_root("docs")), browser(add_viewer("firefox")), reader(add_viewer("acroread")) {
    set("QEL_DOC_PATH", root);
    set("QEL_HTML_BROWSER", browser.path);
    set("QEL_PDF_READER", reader.path);
    browser.on_ping(0, "");
  }

  void add_manual(const std::string& name) const {
    write("docs/htmldocs/" + name + "/index.htm", "<title>" + name + "</title>");
    write("docs/htmldocs/" + name + "/QELdata/QELAllData.js", "QELAddTopic([\"Intro\",\"intro.htm\"]);\n");
  }
  void add_pdf(const std::string& name) const { write("docs/pdfdocs/" + name + ".pdf", "%PDF-1.4\n"); }
  void add_main_portal() const { write("docs/tomedecks/index.html", "portal"); }
  void add_portal(const std::string& name) const { write("docs/tomedecks/" + name + "/index.html", name); }

  // The URLs that the running browser was handed, one a line, without the ping calls between them; shortened.
  std::string shown_urls() const {
    std::string urls;
    for (const Words& arguments : browser.arguments()) {
      if (arguments.size() < 2 || arguments[1] == "ping()") continue;
      urls += arguments[1].substr(8, arguments[1].rfind(",new-tab)") - 8) + "\n";
    }
    return shortened(urls);
  }
  // What the PDF reader was started with, one call a line; shortened.
  std::string read_documents() const {
    std::string calls;
    for (const Words& arguments : reader.arguments()) {
      for (const std::string& argument : arguments) calls += argument + " ";
      calls += "\n";
    }
    return shortened(calls);
  }

  // As on a machine without any browser or reader, whatever this one has.
  static void forget_browser() {
    OlhBrowserRunning();
    forget(olhBrowserNew.d_viewerPaths.get());
  }
  static void forget_reader() {
    OlhAcroIsViewerRunning();
    forget(olhAcroDDENew.d_viewerPaths.get());
    *olhAcroDDENew.d_acroViewerExePath = '\0';
  }

  std::string root;
  Recorder browser;
  Recorder reader;

 private:
  static void forget(OlhViewerPaths* paths) {
    std::free(paths->defaultPath);
    std::free(paths->overridePath);
    *paths = {};
  }
};

}  // namespace olh_test

#endif
