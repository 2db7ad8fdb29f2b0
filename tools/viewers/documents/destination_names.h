// Tags and the named destinations of a PDF that they ask for.
//
// Knows    the form in which the library asks a PDF reader for a place: "M8.newlink." and the tag's letters and
//          digits, a full stop for each blank.
// Not      which destinations a PDF has (pdf_places).
// For      olh, which lists and checks them; olh-import, which adds them.
#ifndef OLH_TOOLS_VIEWERS_DESTINATION_NAMES_H
#define OLH_TOOLS_VIEWERS_DESTINATION_NAMES_H

#include <optional>
#include <string>
#include <string_view>

namespace olh_viewers {

std::string destination_of(std::string_view tag);

// The simplest tag that asks for a destination; nothing when no tag does.
std::optional<std::string> tag_for(std::string_view destination);

}  // namespace olh_viewers

#endif
