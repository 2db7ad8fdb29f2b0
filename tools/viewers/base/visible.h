// Text of strangers on a terminal.
//
// Knows    which characters would play with a terminal: the control characters, those from U+0080 to U+009F too.
// For      olh and both adapters, for all that they print of documents, file names and messages.
#ifndef OLH_TOOLS_VIEWERS_VISIBLE_H
#define OLH_TOOLS_VIEWERS_VISIBLE_H

#include <string>
#include <string_view>

namespace olh_viewers {

// One line, its control characters visible, an escape as \x1b. What is visible stays as it is.
std::string visible(std::string_view line);

// The same for a page, which keeps its line feeds, tabs and form feeds.
std::string visible_page(std::string_view page);

}  // namespace olh_viewers

#endif
