// The half dump of a page, which w3m writes in characters of its own whatever it is asked for.
//
// Knows    their form: a byte that names the set, then the character in digits of seven bits.
// For      text_view.
#ifndef OLH_TOOLS_VIEWERS_HALF_DUMP_H
#define OLH_TOOLS_VIEWERS_HALF_DUMP_H

#include <string>
#include <string_view>

namespace olh_viewers {

// The text in UTF-8. What is of a set that pages in UTF-8 do not lead to stays as it is.
std::string half_dump_as_utf8(std::string_view text);

}  // namespace olh_viewers

#endif
