#include "index_maker.h"

#include "asides.h"
#include "index_pieces.h"
#include "json_texts.h"
#include "packed_numbers.h"
#include "versions.h"
#include "words_in_text.h"

namespace olh_index {

using olh_search::append_number;

namespace {

constexpr std::size_t kLongestPart = 4000;  // bytes of text that count as one section
constexpr std::size_t kLongestHeading = 400;
constexpr std::size_t kBytesOfTexts = std::size_t{32} * 1024;  // of a piece

// The end of the first part of a long text: at a blank, if there is one.
std::size_t end_of_part(std::string_view text) {
  if (text.size() <= kLongestPart) return text.size();
  const std::size_t blank = text.rfind(' ', kLongestPart);
  const bool is_good = blank != std::string_view::npos && blank > kLongestPart / 2;
  return is_good ? blank + 1 : olh_search::cut_to(text, kLongestPart).size();
}

// Appends an array of a number, if there is one, and texts.
void add_row(std::string& rows, const std::string& number, std::initializer_list<std::string_view> texts) {
  rows.append(rows.empty() ? "[" : ",[").append(number);
  for (const std::string_view text : texts) {
    if (rows.back() != '[') rows += ',';
    olh_search::append_json(rows, text);
  }
  rows += ']';
}

}  // namespace

void IndexMaker::add(const IndexedManual& manual) {
  tokens_.set_language(manual.language);
  version_ = version_in(manual.title);
  const std::uint32_t first_page = pages_;
  for (const Page& page : manual.pages) {
    const std::uint32_t first = sections_;
    begin_texts(page);
    shares_.begin_page(is_aside(page.title));
    add_title(page);
    for (const Section& section : page.sections) add_section(page, section, &section == &page.sections.front());
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

void IndexMaker::add_section(const Page& page, const Section& section, bool is_first) {
  std::string_view rest = section.text;
  do {
    const std::size_t end = end_of_part(rest);
    add_part(page, section, rest.substr(0, end), is_first);
    rest.remove_prefix(end);
    is_first = false;
  } while (!rest.empty());
}

void IndexMaker::add_part(const Page& page, const Section& section, std::string_view text, bool is_first) {
  if (!is_first) take_words(olh_search::cut_to(section.heading, kLongestHeading), kHeading);
  const std::string& name = !section.topic.empty() ? section.topic : is_first ? page.topic : section.anchor;
  take_words(name, kName);
  for (const std::string& link : section.links) take_words(link, kLink);
  take_words(text, kText);
  shares_.take_of_section(
      [this](StemNumber stem, std::uint32_t share) { vocabulary_.add_posting(stem, sections_, share); });
  add_text(page, section, text);
  ++sections_;
}

void IndexMaker::begin_texts(const Page& page) {
  add_row(rows_of_pages_, std::to_string(pages_), {page.address, page.title, page.topic});
}

void IndexMaker::add_text(const Page& page, const Section& section, std::string_view text) {
  const std::string_view heading = olh_search::cut_to(section.heading, kLongestHeading);
  if (section.topic.empty())
    add_row(rows_of_sections_, "", {section.anchor, heading, text});
  else
    add_row(rows_of_sections_, "", {section.anchor, heading, text, section.topic});
  ++sections_in_texts_;
  if (rows_of_pages_.size() + rows_of_sections_.size() < kBytesOfTexts) return;
  write_texts();
  begin_texts(page);
}

void IndexMaker::write_texts() {
  write_("texts_" + std::to_string(pieces_of_texts_++),
         "{\"pages\":[" + rows_of_pages_ + "],\"sections\":[" + rows_of_sections_ + "]}");
  append_number(sections_of_texts_, sections_in_texts_);
  rows_of_pages_.clear();
  rows_of_sections_.clear();
  sections_in_texts_ = 0;
}

nlohmann::json IndexMaker::finish() {
  if (sections_in_texts_ > 0) write_texts();
  tokens_.forget();
  shares_ = {};
  nlohmann::json head = write_words(vocabulary_, sections_, write_);
  head["version"] = olh_search::kIndexVersion;
  head["manuals"] = manuals_;
  head["sections_of_pages"] = sections_of_pages_;
  head["sections_of_texts"] = sections_of_texts_;
  head["common"] = vocabulary_.common_words();
  return head;
}

}  // namespace olh_index
