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

// In the words: %u the address (of a file: its file:// URL), %f the file, %d the name of a destination, %e the same
// percent-encoded, %n a page number. A form without words is one that the program does not have.
struct Program {
  std::string_view name;     // as it is called
  std::string_view process;  // as a running one is named; "" when it cannot be told
  Words open;                // an address, or a file at its first page; one that runs takes it, if it ever does
  Words at_destination;      // a PDF at a named destination
  Words at_page;             // a PDF at a page
  bool needs_session_bus;    // without one it cannot hand over to a running window
};

// In the order in which they are looked for along PATH.
std::span<const Program> browsers();
std::span<const Program> pdf_readers();

// The row of a program by the last part of its path, among both; null when there is none.
const Program* program_named(std::string_view name);

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
