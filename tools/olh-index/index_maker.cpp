#include "index_maker.h"

#include "asides.h"
#include "index_pieces.h"
#include "packed_numbers.h"
#include "words_in_text.h"

namespace olh_index {

using olh_search::append_number;

namespace {

constexpr std::size_t kLongestPart = 4000;  // bytes of text that count as one section
constexpr std::size_t kLongestHeading = 400;
constexpr std::size_t kBytesOfTexts = std::size_t{20} * 1024;  // of a piece

// The end of the first part of a long text: at a blank, if there is one.
std::size_t end_of_part(std::string_view text) {
  if (text.size() <= kLongestPart) return text.size();
  const std::size_t blank = text.rfind(' ', kLongestPart);
  const bool is_good = blank != std::string_view::npos && blank > kLongestPart / 2;
  return is_good ? blank + 1 : olh_search::cut_to(text, kLongestPart).size();
}

}  // namespace

void IndexMaker::add(const IndexedManual& manual) {
  vocabulary_.set_language(manual.language);
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
  olh_search::each_word(text, [&](const olh_search::Symbol& symbol) {
    for (const std::string& whole : symbol.wholes)
      shares_.count(vocabulary_.look_up(whole).stem, field, Stands::kAsSymbol);
    for (const std::string& part : symbol.parts) {
      shares_.lengthen(field);
      const Vocabulary::KnownWord word = vocabulary_.look_up(part);
      if (field != kText || !word.is_common) shares_.count(word.stem, field, Stands::kAsWord);
      for (const StemNumber meaning : *word.meanings) shares_.count(meaning, field, Stands::kAsMeaning);
    }
  });
}

void IndexMaker::add_title(const Page& page) {
  take_words(page.title, kTitle);
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
  nlohmann::json row = {pages_, page.address, page.title, page.topic};
  bytes_of_texts_ += page.address.size() + page.title.size() + page.topic.size();
  texts_["pages"].push_back(std::move(row));
}

void IndexMaker::add_text(const Page& page, const Section& section, std::string_view text) {
  nlohmann::json row = {section.anchor, olh_search::cut_to(section.heading, kLongestHeading), text};
  if (!section.topic.empty()) row.push_back(section.topic);
  bytes_of_texts_ += text.size() + section.heading.size();
  texts_["sections"].push_back(std::move(row));
  ++sections_in_texts_;
  if (bytes_of_texts_ < kBytesOfTexts) return;
  write_texts();
  begin_texts(page);
}

void IndexMaker::write_texts() {
  write_("texts_" + std::to_string(pieces_of_texts_++), texts_);
  append_number(sections_of_texts_, sections_in_texts_);
  texts_ = nlohmann::json::object();
  sections_in_texts_ = 0;
  bytes_of_texts_ = 0;
}

nlohmann::json IndexMaker::finish() {
  if (sections_in_texts_ > 0) write_texts();
  nlohmann::json head = write_words(vocabulary_, sections_, write_);
  head["version"] = olh_search::kIndexVersion;
  head["manuals"] = manuals_;
  head["sections_of_pages"] = sections_of_pages_;
  head["sections_of_texts"] = sections_of_texts_;
  head["common"] = vocabulary_.common_words();
  return head;
}

}  // namespace olh_index
