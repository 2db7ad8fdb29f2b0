// The browsers that BROWSER lists, as other programs read that variable.
//
// Knows    that colons separate browsers, the first one preferred, and blanks the words of each; that "%s" stands for the
//          address, "%c" for a colon and "%%" for a percent sign; that a browser of the terminal is of no use to a program that has
//          none. No shell sees any of it.
// Not      which of them is installed (choice).
// For      choice and browser_reach.
#ifndef OLH_TOOLS_VIEWERS_BROWSER_LIST_H
#define OLH_TOOLS_VIEWERS_BROWSER_LIST_H

#include <vector>

#include "words.h"

namespace olh_viewers {

inline constexpr const char* kListVariable = "BROWSER";

// The words of each browser, as in a desktop entry: %u where the address goes. None is without words.
std::vector<Words> browser_list(std::string_view value);

}  // namespace olh_viewers

#endif
