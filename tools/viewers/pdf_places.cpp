#include "pdf_places.h"

#include <cstdlib>

#include "child.h"
#include "files.h"

namespace olh_viewers {

namespace {

// A file whose name begins with "-" must not be taken for an option.
std::string as_argument(const std::string& file) { return file.starts_with('-') ? "./" + file : file; }

}  // namespace

PdfPlace place_in_listing(const std::string& listing, const std::string& destination) {
  const std::string wanted = "] \"" + destination + "\"";
  for (const std::string& line : pieces_of(listing, '\n')) {
    if (!line.ends_with(wanted)) continue;
    const int page = std::atoi(line.c_str());
    return {Found::kYes, page > 0 ? page : 1};
  }
  return {Found::kNo, 1};
}

PdfPlace place_of_destination(const std::string& file, const std::string& destination) {
  const std::optional<std::string> listing = output_of({"pdfinfo", "-dests", as_argument(file)});
  return listing ? place_in_listing(*listing, destination) : PdfPlace();
}

std::optional<int> page_count(const std::string& file) {
  const std::optional<std::string> facts = output_of({"pdfinfo", as_argument(file)});
  const std::size_t at = facts ? facts->find("Pages:") : std::string::npos;
  if (at == std::string::npos) return std::nullopt;
  return std::atoi(facts->c_str() + at + sizeof "Pages:" - 1);
}

}  // namespace olh_viewers
