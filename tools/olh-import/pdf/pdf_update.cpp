#include "pdf_update.h"

#include <algorithm>
#include <cctype>
#include <qpdf/BufferInputSource.hh>
#include <qpdf/QPDFTokenizer.hh>
#include <qpdf/QUtil.hh>
#include <stdexcept>

namespace olh_import {

namespace {

constexpr std::string_view kHeaderWord = "%PDF-";
constexpr std::string_view kLastSectionWord = "startxref";
constexpr int kLargestNumber = 8'388'607;  // of an object
// Where the parser looks for a header and for the place of the last section.
constexpr std::size_t kSearchedBeginning = 1024;
constexpr long long kSearchedEnd = 1054;

// What a trailer says of its own section alone.
constexpr const char* kOfOneSection[] = {"/Prev",    "/XRefStm",      "/Type",        "/W",
                                         "/Index",   "/Length",       "/DecodeParms", "/F",
                                         "/FFilter", "/FDecodeParms", "/Filter",      "/DL"};

std::string padded(long long number, std::size_t digits) {
  const std::string text = std::to_string(number);
  return std::string(digits - std::min(digits, text.size()), '0') + text;
}

std::string big_endian(long long number, int bytes) {
  std::string made;
  while (bytes-- > 0) made += static_cast<char>(number >> (8 * bytes));
  return made;
}

std::string bytes_of(std::FILE* file, long long from, std::size_t most) {
  std::string bytes(most, '\0');
  if (fseeko(file, from, SEEK_SET) != 0) throw std::runtime_error("cannot be read");
  bytes.resize(std::fread(bytes.data(), 1, most, file));
  return bytes;
}

long long size_of(std::FILE* file) {
  if (fseeko(file, 0, SEEK_END) != 0) throw std::runtime_error("cannot be read");
  return ftello(file);
}

std::size_t digits_at(std::string_view text, std::size_t at) {
  const auto is_digit = [](unsigned char byte) { return std::isdigit(byte) != 0; };
  return static_cast<std::size_t>(std::ranges::find_if_not(text.substr(at), is_digit) - (text.begin() + at));
}

// The first header with a version: "%PDF-1.7".
long long header_in(const std::string& beginning) {
  for (std::size_t at = 0; (at = beginning.find(kHeaderWord, at)) != std::string::npos; ++at) {
    const std::size_t version = at + kHeaderWord.size();
    const std::size_t dot = version + digits_at(beginning, version);
    if (dot > version && beginning[dot] == '.' && digits_at(beginning, dot + 1) > 0)
      return static_cast<long long>(at);
  }
  throw std::runtime_error("no header");
}

// What follows the last "startxref" that a number follows.
long long last_section_in(const std::string& end) {
  const auto bytes = std::make_shared<BufferInputSource>("end", end);
  QPDFTokenizer tokenizer;
  for (std::size_t left = end.size(), at = 0; (at = end.substr(0, left).rfind(kLastSectionWord)) != std::string::npos;
       left = at) {
    bytes->seek(static_cast<qpdf_offset_t>(at), SEEK_SET);
    if (!tokenizer.readToken(bytes, "", true).isWord(std::string(kLastSectionWord))) continue;
    const QPDFTokenizer::Token place = tokenizer.readToken(bytes, "", true);
    if (place.isInteger()) return QUtil::string_to_ll(place.getValue().c_str());
  }
  throw std::runtime_error("no startxref");
}

}  // namespace

PdfUpdate::PdfUpdate(std::FILE* source, const QPDFObjectHandle& trailer, std::FILE* to)
    : source_(source),
      trailer_(trailer),
      to_(to),
      header_(header_in(bytes_of(source, 0, kSearchedBeginning))),
      at_(size_of(source) - header_),
      next_number_(trailer_.getKey("/Size").getIntValueAsInt()) {
  last_section_ = last_section_in(bytes_of(source, std::max(header_ + at_ - kSearchedEnd, 0LL), kSearchedEnd));
  digest_->SHA2_init(256);
  write("\n");
}

void PdfUpdate::write(std::string_view bytes) {
  std::fwrite(bytes.data(), 1, bytes.size(), to_);
  at_ += static_cast<long long>(bytes.size());
}

QPDFObjGen PdfUpdate::add(const std::string& object) {
  if (next_number_ > kLargestNumber) throw std::runtime_error("too large numbers of objects");
  const QPDFObjGen place(next_number_++, 0);
  replace(place, object);
  return place;
}

void PdfUpdate::replace(QPDFObjGen place, const std::string& object) {
  entries_[place.getObj()] = {at_, place.getGen()};
  const std::string text = place.unparse(' ') + " obj\n" + object + "\nendobj\n";
  digest_->SHA2_update(reinterpret_cast<const unsigned char*>(text.data()), text.size());
  write(text);
}

void PdfUpdate::blank(long long from, const std::string& bytes) {
  if (from < 0 || bytes_of(source_, header_ + from, bytes.size()) != bytes) return;
  const std::string spaces(bytes.size(), ' ');
  fseeko(to_, header_ + from, SEEK_SET);
  std::fwrite(spaces.data(), 1, spaces.size(), to_);
  fseeko(to_, 0, SEEK_END);
}

void PdfUpdate::finish() {
  QPDFObjectHandle trailer = trailer_.shallowCopy();
  for (const char* key : kOfOneSection) trailer.removeKey(key);
  trailer.replaceKey("/ID", identifier());
  trailer.replaceKey("/Prev", QPDFObjectHandle::newInteger(last_section_));
  const long long section = at_;
  trailer_.getKey("/Type").isNameAndEquals("/XRef") ? write_stream(trailer) : write_table(trailer);
  write("startxref\n" + std::to_string(section) + "\n%%EOF\n");
}

// The first part says which file this once was, and stays; the second is made from the objects.
QPDFObjectHandle PdfUpdate::identifier() {
  constexpr std::size_t kSize = 16;
  digest_->SHA2_finalize();
  const QPDFObjectHandle now = QPDFObjectHandle::newString(digest_->SHA2_digest().substr(0, kSize));
  QPDFObjectHandle before = trailer_.getKey("/ID");
  const bool has_first = before.isArray() && before.getArrayNItems() > 0 && before.getArrayItem(0).isString();
  return QPDFObjectHandle::newArray({has_first ? before.getArrayItem(0) : now, now});
}

// How many entries follow upon each other by their numbers, from this one.
int PdfUpdate::run_from(std::map<int, Entry>::const_iterator first) const {
  int count = 0;
  for (auto entry = first; entry != entries_.end() && entry->first == first->first + count; ++entry) ++count;
  return count;
}

void PdfUpdate::write_table(QPDFObjectHandle trailer) {
  trailer.replaceKey("/Size", QPDFObjectHandle::newInteger(next_number_));
  std::string table = "xref\n";
  int left = 0;  // of a run
  for (auto entry = entries_.begin(); entry != entries_.end(); ++entry, --left) {
    if (left == 0) {
      left = run_from(entry);
      table += std::to_string(entry->first) + " " + std::to_string(left) + "\n";
    }
    table += padded(entry->second.from, 10) + " " + padded(entry->second.generation, 5) + " n \n";
  }
  write(table + "trailer\n" + trailer.unparse() + "\n");
}

// The stream has an entry itself.
void PdfUpdate::write_stream(QPDFObjectHandle trailer) {
  const int number = next_number_++;
  entries_[number] = {at_, 0};
  std::string entries;
  QPDFObjectHandle index = QPDFObjectHandle::newArray();
  int left = 0;
  for (auto entry = entries_.begin(); entry != entries_.end(); ++entry, --left) {
    if (left == 0) {
      left = run_from(entry);
      index.appendItem(QPDFObjectHandle::newInteger(entry->first));
      index.appendItem(QPDFObjectHandle::newInteger(left));
    }
    entries += big_endian(1, 1) + big_endian(entry->second.from, 4) + big_endian(entry->second.generation, 2);
  }
  trailer.replaceKey("/Type", QPDFObjectHandle::newName("/XRef"));
  trailer.replaceKey("/W", QPDFObjectHandle::parse("[1 4 2]"));
  trailer.replaceKey("/Index", index);
  trailer.replaceKey("/Size", QPDFObjectHandle::newInteger(next_number_));
  trailer.replaceKey("/Length", QPDFObjectHandle::newInteger(static_cast<long long>(entries.size())));
  write(QPDFObjGen(number, 0).unparse(' ') + " obj\n" + trailer.unparse() + "\nstream\n" + entries +
        "\nendstream\nendobj\n");
}

}  // namespace olh_import
