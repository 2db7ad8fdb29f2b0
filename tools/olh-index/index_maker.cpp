#include "index_maker.h"

#include "asides.h"
#include "index_pieces.h"
#include "packed_numbers.h"
#include "text_pieces.h"
#include "versions.h"
#include "words_in_text.h"

namespace olh_index {

using olh_search::append_number;

void IndexMaker::add(const IndexedManual& manual) {
  tokens_.set_language(manual.language);
  version_ = version_in(manual.title);
  const std::uint32_t first_page = pages_;
  for (const Page& page : manual.pages) {
    const std::uint32_t first = sections_;
    shares_.begin_page(is_aside(page.title));
    add_title(page);
    for (const Section& section : page.sections)
      each_part(section, [&](std::string_view text) { add_part(page, section, text, sections_ == first); });
    append_number(sections_of_pages_, sections_ - first);
    ++pages_;
  }
  manuals_.push_back(
      {manual.name, manual.title, manual.is_pdf ? "pdf" : "html", pages_ - first_page, manual.unsearched});
}

void IndexMaker::take_words(std::string_view text, Field field) {
  olh_search::each_token(text, [&](std::string_view token) {
    const KnownTokens::Token known = tokens_.look_up(token);
    shares_.lengthen(field, known.words);
    for (const KnownTokens::Given& given : known.given)
      if (field != kText || !given.is_common) shares_.count(given.stem, field, given.as);
  });
}

void IndexMaker::add_title(const Page& page) {
  take_words(page.title, kTitle);
  if (names_version(page.title, version_)) take_words("version", kTitle);
  for (const std::string& link : page.links) take_words(link, kLink);
  shares_.take_of_page([this](StemNumber stem, std::uint32_t share) { vocabulary_.add_title(stem, pages_, share); });
}

void IndexMaker::add_part(const Page& page, const Section& section, std::string_view text, bool is_first) {
  if (!is_first) take_words(heading_of(section), kHeading);
  const std::string& name = !section.topic.empty() ? section.topic : is_first ? page.topic : section.anchor;
  take_words(name, kName);
  for (const std::string& link : section.links) take_words(link, kLink);
  take_words(text, kText);
  shares_.take_of_section(
      [this](StemNumber stem, std::uint32_t share) { vocabulary_.add_posting(stem, sections_, share); });
  ++sections_;
}

nlohmann::json IndexMaker::finish() {
  tokens_.forget();
  shares_ = {};
  nlohmann::json head = write_words(vocabulary_, sections_, write_);
  head["version"] = olh_search::kIndexVersion;
  head["manuals"] = manuals_;
  head["sections_of_pages"] = sections_of_pages_;
  head["common"] = vocabulary_.common_words();
  return head;
}

}  // namespace olh_index
