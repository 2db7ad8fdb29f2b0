// Which program shows a page or a PDF.
//
// Knows    the order: the user's variable, BROWSER, the desktop's default, Debian's x-www-browser, then the table along PATH,
//          in WSL those of Windows, and whatever the desktop opens in the end; for a PDF a browser behind all readers. Never
//          the adapter itself.
// Not      how a program is called (programs) or started (child).
// For      both adapters.
#ifndef OLH_TOOLS_VIEWERS_CHOICE_H
#define OLH_TOOLS_VIEWERS_CHOICE_H

#include "programs.h"

namespace olh_viewers {

struct Choice {
  std::string program;           // its path; "" when there is none
  const Program* row = nullptr;  // null for a program that the table does not know
  Words before;                  // "env" and what it sets, in front of the program
  Words exec;                    // what a desktop entry or BROWSER wants instead of a row; else empty
  std::string source;            // who chose it, for a sentence in brackets
  bool is_of_browsers = false;   // chosen as a browser, so that it opens addresses
  explicit operator bool() const { return !program.empty(); }
};

inline constexpr const char* kBrowserVariable = "OLH_BROWSER_PROGRAM";
inline constexpr const char* kReaderVariable = "OLH_PDF_PROGRAM";

Choice choose_browser();
Choice choose_reader();

// The command line that opens an address or file; that opens a PDF at a destination or a page, or nothing when the
// program has no such form.
Words open_command(const Choice& choice, const Place& place);
Words destination_command(const Choice& choice, const Place& place);
Words page_command(const Choice& choice, const Place& place);
// Whether it opens addresses, as a reader of PDFs too.
bool is_browser(const Choice& choice);
// The command line that only starts it.
Words start_command(const Choice& choice);

}  // namespace olh_viewers

#endif
