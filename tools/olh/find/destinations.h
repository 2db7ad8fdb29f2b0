// Tags and the named destinations of a PDF that they ask for.
//
// Knows    the form in which the library asks a PDF reader for a place: "M8.newlink." and the tag's letters and
//          digits, a full stop for each blank.
// Not      which destinations a PDF has (pdf_places).
// For      topics and check.
#ifndef OLH_TOOLS_DESTINATIONS_H
#define OLH_TOOLS_DESTINATIONS_H

#include <optional>
#include <string>
#include <string_view>

namespace olh {

std::string destination_of(std::string_view tag);

// The simplest tag that asks for a destination; nothing when no tag does.
std::optional<std::string> tag_for(std::string_view destination);

// Whether destinations can be read at all: with pdfinfo, of poppler-utils. A sentence's end that says what to do
// when they cannot.
bool can_read_destinations();
inline constexpr const char* kInstallPdfinfo = "pdfinfo is not installed; it is in the package poppler-utils";

}  // namespace olh

#endif
