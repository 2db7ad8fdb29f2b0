// What olh-browser and olh-pdf-reader are alike in: programs that take the library's command lines and open a viewer.
//
// Knows    the options of both, and that a viewer which runs may be out of reach: then nothing is started, since what is
//          asked for would be lost.
// Not      the command lines (browser, reader), how a viewer is reached (running) or watched (child).
// For      both adapters.
#ifndef OLH_TOOLS_VIEWERS_ADAPTER_H
#define OLH_TOOLS_VIEWERS_ADAPTER_H

#include "choice.h"
#include "trace.h"

namespace olh_viewers {

struct Request {
  enum class Kind {
    kWrong,   // none of the adapter's command lines
    kStart,   // only the viewer
    kOpen,    // a document
    kRemote,  // a document, in a new tab of the browser that runs
    kPing     // whether the browser runs
  };
  Kind kind = Kind::kWrong;
  std::string document;     // an address, or the file of a PDF
  std::string destination;  // in a PDF; "": its first page
  bool as_text = false;     // --text
  bool dry_run = false;     // --dry-run
};

struct Adapter {
  std::string name;
  const char* help;
  Request (*request_in)(const Words& words);                  // in what stands behind the options
  int (*answer)(const Request& request, const Trace& trace);  // returns an ExitStatus
};

int run_adapter(const Adapter& adapter, int argc, char** argv);

// Both return an ExitStatus. What --dry-run prints: a command, and who chose it.
int print_command(const Words& command, const std::string& source);
// Starts the viewer that was chosen, and watches it for so many milliseconds; what is not kExitShown has been said aloud.
int start_viewer(const Choice& choice, const Words& command, int milliseconds, const Trace& trace);

}  // namespace olh_viewers

#endif
