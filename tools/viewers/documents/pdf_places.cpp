#include "pdf_places.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <string_view>

#include "child.h"
#include "files.h"
#include "words.h"

namespace olh_viewers {

namespace {

// What pdfinfo says of a file.
std::optional<std::string> information(const std::string& file, Words words) {
  if (!is_regular_file(file)) return std::nullopt;
  words.push_back(as_argument(file));
  return output_of(words);
}

}  // namespace

std::vector<NamedPlace> places_in_listing(const std::string& listing) {
  constexpr std::string_view kBeforeName = "] \"";
  std::vector<NamedPlace> places;
  for (const std::string& line : pieces_of(listing, '\n')) {
    const std::size_t begin = line.find(kBeforeName);
    if (begin == std::string::npos || !line.ends_with('"')) continue;
    const std::size_t name = begin + kBeforeName.size();
    if (name >= line.size()) continue;
    places.push_back({line.substr(name, line.size() - 1 - name), std::max(std::atoi(line.c_str()), 1)});
  }
  return places;
}

PdfPlace place_in_listing(const std::string& listing, const std::string& destination) {
  for (const NamedPlace& place : places_in_listing(listing))
    if (place.name == destination) return {Found::kYes, place.page};
  return {Found::kNo, 1};
}

std::optional<std::vector<NamedPlace>> destinations_of(const std::string& file) {
  const std::optional<std::string> listing = information(file, {"pdfinfo", "-dests"});
  return listing ? std::optional(places_in_listing(*listing)) : std::nullopt;
}

std::optional<int> page_named_by(std::string_view destination) {
  constexpr std::string_view kForm = "page=";
  if (!destination.starts_with(kForm)) return std::nullopt;
  const std::string_view digits = destination.substr(kForm.size());
  int page = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), page);
  const bool is_page = error == std::errc() && end == digits.data() + digits.size() && page > 0;
  return is_page ? std::optional(page) : std::nullopt;
}

PdfPlace place_of_destination(const std::string& file, const std::string& destination) {
  if (const std::optional<int> page = page_named_by(destination)) return {Found::kYes, *page};
  const std::optional<std::string> listing = information(file, {"pdfinfo", "-dests"});
  return listing ? place_in_listing(*listing, destination) : PdfPlace();
}

bool can_read_destinations() { return !find_program("pdfinfo").empty(); }

std::optional<int> page_count(const std::string& file) {
  const std::optional<std::string> facts = information(file, {"pdfinfo"});
  const std::size_t at = facts ? facts->find("Pages:") : std::string::npos;
  if (at == std::string::npos) return std::nullopt;
  return std::atoi(facts->c_str() + at + sizeof "Pages:" - 1);
}

}  // namespace olh_viewers
