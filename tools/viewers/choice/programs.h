// The viewers that people have, a row each: how to open something in them, and how to see whether one runs.
//
// Knows    the command lines, each of them tried with the program itself.
// Not      which of them is taken (choice), nor how a program is started (child).
// For      both adapters.
#ifndef OLH_TOOLS_VIEWERS_PROGRAMS_H
#define OLH_TOOLS_VIEWERS_PROGRAMS_H

#include <span>
#include <string>
#include <string_view>

#include "words.h"

namespace olh_viewers {

// How it is seen that a program runs, without a word to it. Every road that a row has is tried in this order, and the first
// that can answer does.
struct Traces {
  Words locks;  // links that hold the process at their end, below HOME or, with %c, the settings; "*": any name
  std::string_view bus_name;  // its name on the session bus, also with "-" or "." and more behind it
  std::string_view process;   // what its process is called; with a lock, what it begins with
};

// In the words: %u the address (of a file: its file:// URL), %q the same with an empty query before a file's fragment, %f
// the file, %d the name of a destination, %e the same percent-encoded, %n a page number. A form without words is one that
// the program does not have.
struct Program {
  std::string_view name;           // as it is called
  Words open;                      // an address, or a file at its first page; one that runs takes it, if it ever does
  Words at_destination;            // a PDF at a named destination
  Words at_page;                   // a PDF at a page
  Traces traces;                   // by which it is seen to run
  bool needs_session_bus = false;  // its running window takes pages over the bus only, under the name in `traces`
  bool takes_plain_names_only = false;  // its start script breaks other destinations into words
  bool asks_desktop = false;            // it leaves the choice to the desktop
  bool has_idle_status = false;         // it ends with a failure's status whatever happens
};

// In the order in which they are looked for along PATH.
std::span<const Program> browsers();
std::span<const Program> pdf_readers();
// Programs that open an address in a browser of their choice: by way of the desktop, or of Windows.
std::span<const Program> openers();
std::span<const Program> windows_openers();

// The last part of a program's path, and that of what it is a link to.
Words names_of(const std::string& path);

// The row of that name among browsers and readers, or of the program at a path, which may be a link such as x-www-browser;
// null when there is none.
const Program* program_named(std::string_view name);
const Program* program_at(const std::string& path);
// The same among those that choose a browser.
const Program* opener_at(const std::string& path);

// What the placeholders of a row, or of a desktop entry, stand for.
struct Place {
  std::string url;
  std::string file;
  std::string destination;
  int page = 0;
};
Words filled(const Words& words, const Place& place);

}  // namespace olh_viewers

#endif
