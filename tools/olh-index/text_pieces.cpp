#include "text_pieces.h"

#include <initializer_list>
#include <utility>

#include "json_texts.h"
#include "packed_numbers.h"
#include "words_in_text.h"

namespace olh_index {

namespace {

constexpr std::size_t kLongestPart = 4000;  // bytes of text that count as one section
constexpr std::size_t kLongestHeading = 400;
constexpr std::size_t kBytesOfTextPiece = std::size_t{32} * 1024;

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

void each_part(const Section& section, const std::function<void(std::string_view text)>& call) {
  std::string_view rest = section.text;
  do {
    const std::size_t end = end_of_part(rest);
    call(rest.substr(0, end));
    rest.remove_prefix(end);
  } while (!rest.empty());
}

std::string_view heading_of(const Section& section) { return olh_search::cut_to(section.heading, kLongestHeading); }

void TextPieces::add(const IndexedManual& manual) {
  for (const Page& page : manual.pages) {
    begin_page(page);
    for (const Section& section : page.sections)
      each_part(section, [&](std::string_view text) { add_part(page, section, text); });
    ++pages_;
  }
}

void TextPieces::begin_page(const Page& page) {
  add_row(rows_of_pages_, std::to_string(pages_), {page.address, page.title, page.topic});
}

void TextPieces::add_part(const Page& page, const Section& section, std::string_view text) {
  if (section.topic.empty())
    add_row(rows_of_sections_, "", {section.anchor, heading_of(section), text});
  else
    add_row(rows_of_sections_, "", {section.anchor, heading_of(section), text, section.topic});
  ++sections_;
  if (rows_of_pages_.size() + rows_of_sections_.size() < kBytesOfTextPiece) return;
  write();
  begin_page(page);
}

void TextPieces::write() {
  write_("texts_" + std::to_string(pieces_++),
         "{\"pages\":[" + rows_of_pages_ + "],\"sections\":[" + rows_of_sections_ + "]}");
  olh_search::append_number(sections_of_pieces_, sections_);
  rows_of_pages_.clear();
  rows_of_sections_.clear();
  sections_ = 0;
}

std::string TextPieces::finish() {
  if (sections_ > 0) write();
  return std::move(sections_of_pieces_);
}

}  // namespace olh_index
