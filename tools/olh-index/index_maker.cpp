#include "index_maker.h"

#include <algorithm>
#include <cmath>

#include "packed_numbers.h"
#include "points.h"
#include "words_in_text.h"

namespace olh_index {

using olh_search::append_number;
using olh_search::kMostInOneCharacter;
using olh_search::kShareOfLinks;

namespace {

// How much an occurrence counts, how long the field is usually, and how much a longer one takes off. In the order of the
// fields: title, heading, name, link, text.
struct Weights {
  double weight;
  double usual_words;
  double by_length;
};
constexpr Weights kWeights[] = {{6, 4, 0.5}, {6, 4, 0.5}, {4, 3, 0.4}, {0.5, 30, 0.5}, {1, 120, 0.6}};
constexpr double kSaturation = 1.6;
constexpr double kSymbolInText = 0.4;  // of a symbol's share where it is only mentioned
constexpr double kMeaning = 0.5;       // of another word's share that means the same

constexpr std::size_t kLongestPart = 4000;  // bytes of text that count as one section
constexpr std::size_t kLongestHeading = 400;
constexpr std::size_t kBytesOfTexts = std::size_t{20} * 1024;  // of a piece

// What is no text does not get into a script.
std::string as_text(std::string_view bytes) {
  const auto is_plain = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
  if (std::ranges::all_of(bytes, is_plain)) return std::string(bytes);
  const std::string dumped = nlohmann::json(bytes).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
  return nlohmann::json::parse(dumped).get<std::string>();
}

// The end of the first part of a long text: at a blank, if there is one.
std::size_t end_of_part(std::string_view text) {
  if (text.size() <= kLongestPart) return text.size();
  const std::size_t blank = text.rfind(' ', kLongestPart);
  const bool is_good = blank != std::string_view::npos && blank > kLongestPart / 2;
  return is_good ? blank + 1 : olh_search::cut_to(text, kLongestPart).size();
}

double saturated(double sum) { return sum / (sum + kSaturation) * kMostInOneCharacter; }

std::uint32_t share(double part, std::uint32_t least, std::uint32_t most) {
  return std::clamp(static_cast<std::uint32_t>(std::lround(part)), least, most);
}

}  // namespace

void IndexMaker::add(const IndexedManual& manual) {
  vocabulary_.set_language(manual.language);
  const std::uint32_t first_page = pages_;
  for (const Page& page : manual.pages) {
    const std::uint32_t first = sections_;
    begin_texts(page);
    add_title(page);
    for (const Section& section : page.sections) add_section(page, section, &section == &page.sections.front());
    append_number(sections_of_pages_, sections_ - first);
    ++pages_;
  }
  manuals_.push_back({as_text(manual.name), as_text(manual.title), manual.is_pdf ? "pdf" : "html",
                      pages_ - first_page, manual.unsearched});
}

void IndexMaker::take_words(std::string_view text, Field field, Found& found) {
  olh_search::each_word(text, [&](const olh_search::Symbol& symbol) {
    for (const std::string& whole : symbol.wholes)
      found.words.push_back({vocabulary_.stem_of(whole), field, true, false});
    for (const std::string& part : symbol.parts) {
      ++found.lengths[field];
      const StemNumber stem = vocabulary_.stem_of(part);
      if (field != kText || !vocabulary_.is_common(stem)) found.words.push_back({stem, field, false, false});
      for (const StemNumber meaning : vocabulary_.meanings_of(stem))
        found.words.push_back({meaning, field, false, true});
    }
  });
}

template <typename Call>
void IndexMaker::each_stem(Found& found, Call call) {
  std::ranges::stable_sort(found.words, {}, &Occurrence::stem);
  for (auto at = found.words.begin(); at != found.words.end();) {
    const StemNumber stem = at->stem;
    Share share;
    for (; at != found.words.end() && at->stem == stem; ++at) {
      const Weights& weights = kWeights[at->field];
      share.of_fields[at->field] +=
          weights.weight /
          (1 - weights.by_length + weights.by_length * found.lengths[at->field] / weights.usual_words);
      share.is_symbol |= at->is_symbol;
      share.is_meaning |= at->is_meaning;
    }
    call(stem, share);
  }
}

// A symbol in a heading or name is what stands there; elsewhere it is only used.
std::uint32_t IndexMaker::share_of_section(const Share& found) {
  const double named = found.of_fields[kHeading] + found.of_fields[kName];
  if (found.is_symbol && named > 0) return kMostInOneCharacter;
  const double part = saturated(named + found.of_fields[kLink] + found.of_fields[kText]);
  const double counts = found.is_symbol ? kSymbolInText : found.is_meaning ? kMeaning : 1;
  return share(part * counts, 1, kMostInOneCharacter);
}

std::uint32_t IndexMaker::share_of_page(const Share& found) {
  const double part = saturated(found.of_fields[kTitle] + found.of_fields[kLink]);
  if (found.is_meaning) return share(part * kMeaning, 1, kShareOfLinks);
  return found.of_fields[kTitle] > 0 ? share(part, kShareOfLinks + 1, kMostInOneCharacter)
                                     : share(part, 1, kShareOfLinks);
}

void IndexMaker::add_title(const Page& page) {
  Found found;
  take_words(page.title, kTitle, found);
  for (const std::string& link : page.links) take_words(link, kLink, found);
  each_stem(found, [this](StemNumber stem, const Share& share) {
    vocabulary_.add_title(stem, pages_, share_of_page(share));
  });
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
  Found found;
  if (!is_first) take_words(olh_search::cut_to(section.heading, kLongestHeading), kHeading, found);
  const std::string& name = !section.topic.empty() ? section.topic : is_first ? page.topic : section.anchor;
  take_words(name, kName, found);
  for (const std::string& link : section.links) take_words(link, kLink, found);
  take_words(text, kText, found);
  each_stem(found, [this](StemNumber stem, const Share& share) {
    vocabulary_.add_posting(stem, sections_, share_of_section(share));
  });
  add_text(page, section, text);
  ++sections_;
}

void IndexMaker::begin_texts(const Page& page) {
  nlohmann::json row = {pages_, as_text(page.address), as_text(page.title), as_text(page.topic)};
  bytes_of_texts_ += page.address.size() + page.title.size() + page.topic.size();
  texts_["pages"].push_back(std::move(row));
}

void IndexMaker::add_text(const Page& page, const Section& section, std::string_view text) {
  nlohmann::json row = {as_text(section.anchor), as_text(olh_search::cut_to(section.heading, kLongestHeading)),
                        as_text(text)};
  if (!section.topic.empty()) row.push_back(as_text(section.topic));
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
  const nlohmann::json first_words = write_words(vocabulary_, sections_, write_);
  return {{"version", olh_search::kIndexVersion},
          {"manuals", manuals_},
          {"sections_of_pages", sections_of_pages_},
          {"sections_of_texts", sections_of_texts_},
          {"first_words", first_words},
          {"common", vocabulary_.common_words()}};
}

}  // namespace olh_index
