// The places in a PDF.
//
// Knows    what pdfinfo (of poppler-utils) prints of named destinations and pages.
// For      olh-pdf-reader, and text_view; olh, which lists and checks destinations.
#ifndef OLH_TOOLS_VIEWERS_PDF_PLACES_H
#define OLH_TOOLS_VIEWERS_PDF_PLACES_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace olh_viewers {

enum class Found { kYes, kNo, kCannotTell };  // the last: without pdfinfo, or for a file that it cannot read

struct PdfPlace {
  Found found = Found::kCannotTell;
  int page = 1;
};

// The page that "page=12" names, as addresses of PDFs have it; nothing for everything else.
std::optional<int> page_named_by(std::string_view destination);

// The page of a named destination, or the one that "page=12" names.
PdfPlace place_of_destination(const std::string& file, const std::string& destination);

struct NamedPlace {
  std::string name;
  int page = 1;
};

// All named destinations; nothing when that cannot be told.
std::optional<std::vector<NamedPlace>> destinations_of(const std::string& file);

// The same in what pdfinfo -dests has printed: lines of a page, an array in brackets, and the name in double quotes.
std::vector<NamedPlace> places_in_listing(const std::string& listing);
PdfPlace place_in_listing(const std::string& listing, const std::string& destination);

// Whether destinations can be read at all, and a sentence's end that says what to do when they cannot.
bool can_read_destinations();
inline constexpr const char* kInstallPdfinfo = "pdfinfo is not installed; it is in the package poppler-utils";

// How many pages there are; nothing when that cannot be told.
std::optional<int> page_count(const std::string& file);

}  // namespace olh_viewers

#endif
