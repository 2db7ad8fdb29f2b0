// The debug output of whole calls, as somebody who looks for a fault reads it: it is kept in tests/resources/debug_output.txt,
// where "@" stands for the scene's directory. Whoever changes a message changes it there too.
#include "help_scene.h"
#include "olh_doclist.h"

namespace {

class DebugOutputOf : public olh_test::HelpScene {
 protected:
  void note(const char* what, const std::function<void()>& work) {
    output += std::string("== ") + what + "\n" + debug_lines_of(work);
  }
  void note_calls();
  void note_viewers();
  void note_option_files();
  void note_refusals();

  olh_docList locator;
  std::string output;
};

void DebugOutputOf::note_calls() {
  note("first use, and no second one", [] {
    OlhDocListInit();
    OlhDocListInit();
  });
  note("a topic in the running browser", [] { OlhHelpCall("guide", "Intro", OLH_DISPLAY_POPUP); });
  note("a PDF, which stands in for a manual", [] { OlhHelpCall("paper", "Getting Started", OLH_DISPLAY_NORMAL); });
  note("a portal", [] { OlhHelpCall("gear_td", "search", OLH_DISPLAY_NORMAL); });
  note("a document that is nowhere", [] { OlhHelpCall("absent", nullptr, OLH_DISPLAY_NORMAL); });
  note("a portal that is nowhere", [] { OlhTomeDeck("absent_td", nullptr); });
  note("a topic that is there", [] { OlhHelpTest("guide", "in tro!"); });
  note("a topic that is nowhere", [] { OlhHelpTest("guide", "Other"); });
  note("a search", [] { OlhSearch("a&b", "guide"); });
  note("the version", [] { OlhVersion(); });
}

void DebugOutputOf::note_viewers() {
  browser.on_ping(0, "one\nnot running");
  note("a browser that does not run", [] { OlhBrowserOpenURL("it's", nullptr); });
  note("an overlong URL", [] { OlhBrowser().startBrowser(std::string(8192, 'x').c_str(), nullptr, "browser"); });
  OlhBrowserSetPath("/no/such/browser");
  note("a browser that is not there", [] { OlhBrowserOpenURL(nullptr, nullptr); });
  forget_browser();
  note("no browser", [] { OlhBrowserOpenURL("u", nullptr); });
  note("the browser of the variable", [] { OlhBrowser().setBrowserDefaults(nullptr); });
  write("home/.qel_viewer_config.ini", "QEL_HTML_BROWSER=\"" + make_program("other") + "\"\n");
  note("the browser of the option file", [] { OlhBrowser().setBrowserDefaults(nullptr); });
  note("the user's reader, not there", [] {
    OlhAcroSetPath("/no/such/reader");
    OlhAcroDocOpen("/d/a.pdf", nullptr, "/tree/reader");
  });
  unset("QEL_PDF_READER");
  note("the tree's reader", [] { OlhAcroDDE().startViewer(nullptr, "-x", nullptr, "/tree/reader"); });
  note("a reader that was found", [] { OlhAcroDDE().startViewer(nullptr, "-x", nullptr, ""); });
}

void DebugOutputOf::note_option_files() {
  constexpr int kAltPathKey = 3;
  constexpr int kTreeFile = 2;
  const auto set_alternate_path = [] { SetIniFile(kAltPathKey, "/n", kTreeFile); };
  note("an alternate location", [this] { OlhSetAltDocPath(make_root("alternate").c_str()); });
  write("more/qel_doc_options.ini", "X=1\nQEL_ALT_DOC_PATH=\"/a:\n/b:\n/c\"\n");
  note("an option file with a value of three lines", set_alternate_path);
  make_directory("more/qel_doc_options.ini.new");
  note("an option file that cannot be written", set_alternate_path);
}

void DebugOutputOf::note_refusals() {
  note("nothing at all", [this] {
    char buffer[OLH_BUFFER_SIZE] = "";
    GetOlhVariable(nullptr, "A");
    GetOlhVariable(buffer, nullptr);
    locator.SetOlhVariable("", "1");
    FindHtmlDoc(nullptr, "x", buffer);
    FindHtmlDoc(buffer, nullptr, buffer);
    FindPdfDoc(nullptr, "x", buffer);
    FindPdfDoc(buffer, "", buffer);
    FindTomeDeck(nullptr, "x", buffer);
    FindTomeDeck(buffer, nullptr, buffer);
    FindPath(buffer, nullptr);
    FindHtmlTopic("http://h/x", "topic", buffer);
    HtmlSearch("", "lib", "");
    locator.FormatNewlink(nullptr);
    locator.modifyOldIniFile(nullptr, buffer, 1, "/b");
    for (const char* path : {"", "/no/such/root", "/proc"}) locator.ValidDocPath(path);
    OlhHelpCall("", "", 0);
    OlhSearch(nullptr, nullptr);
  });
  OlhSetViewer(5, 0);
  note("an unknown viewer", [] {
    char viewer_path[] = "/bin/x";
    showDocGotoTag("file:///d", nullptr, viewer_path);
    isViewerRunning(5);
    startViewer();
  });
  note("a URL that does not fit", [] {
    OlhSetViewer(OLH_VIEWER_PDF, 0);
    showDocGotoTag("/d/a.pdf", std::string(2048, 'x').c_str(), nullptr);
  });
  note("a locator and its variables", [] {
    olh_docList other;
    other.SetOlhVariable("A", "1");
    other.ClearOlhVariables(other.mVariableList);
  });
}

TEST_F(DebugOutputOf, WholeCalls) {
  set("QEL_DOC_PATH", make_root("more") + ":" + root);
  write("docs/qel_doc_options.ini", "QEL_HTML_BROWSER=\"" + browser.path + "\"\nQEL_PDF_READER=/no/such/reader\n");
  write("more/qel_doc_options.ini", "QEL_PDF_READER=\"" + reader.path + "\"\n");
  add_manual("guide");
  add_manual("qel_html_help");
  add_pdf("paper");
  add_main_portal();
  add_portal("gear_td");
  note_calls();
  note_viewers();
  note_option_files();
  note_refusals();
  EXPECT_EQ(output, olh_test::read_file(olh_test::beside_program("resources/debug_output.txt")));
}

}  // namespace
