// The program that the user's desktop opens a kind of document with.
//
// Knows    the lists of default applications and the entries of applications, as freedesktop.org lays them down.
// Not      what the program can do (programs).
// For      choice.
#ifndef OLH_TOOLS_VIEWERS_DESKTOP_DEFAULT_H
#define OLH_TOOLS_VIEWERS_DESKTOP_DEFAULT_H

#include "words.h"

namespace olh_viewers {

// The words of the entry's Exec line, with %u or %f where the document goes; none when there is no default. `kind` is a
// type ("application/pdf", "x-scheme-handler/http").
Words desktop_default(const std::string& kind);

// Where the program stands in the words of an Exec line: behind "env" and the variables that it sets.
std::size_t place_of_program(const Words& words);

// The value of a key in a section of an INI text, as desktop entries are; "" without one.
std::string value_in(const std::string& text, const std::string& section, const std::string& key);

// The words of an Exec line: blanks separate, double quotes keep together, a backslash in quotes takes the next
// character as it is.
Words exec_words(std::string_view line);

}  // namespace olh_viewers

#endif
