// HTML Help of Windows: the project (.hhp) names the contents (.hhc), the keywords (.hhk), and the context ids that hosts
// pass, as words and, by the #defines of headers, as numbers. Names of files are as Windows sees them: parts separated
// by "\", in any case of letters.
#include <iconv.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <set>

#include "nested_keywords.h"
#include "notes.h"
#include "reader.h"
#include "utf8.h"
#include "words.h"

namespace olh_import {

namespace {

using olh_viewers::lower_case;

constexpr std::size_t kMostHeaders = 1000;  // of a project

// The encoding of a project by its language: the lower ten bits of its number, or all of it where a language has two.
struct LanguageEncoding {
  unsigned long language;
  const char* encoding;
};
constexpr LanguageEncoding kLanguageEncodings[] = {
    {0x0404, "BIG5-HKSCS"}, {0x0c04, "BIG5-HKSCS"}, {0x1404, "BIG5-HKSCS"}, {0x0c1a, "CP1251"}, {0x04, "GB18030"},
    {0x11, "CP932"},        {0x12, "CP949"},        {0x02, "CP1251"},       {0x19, "CP1251"},   {0x22, "CP1251"},
    {0x23, "CP1251"},       {0x2f, "CP1251"},       {0x05, "CP1250"},       {0x0e, "CP1250"},   {0x15, "CP1250"},
    {0x18, "CP1250"},       {0x1a, "CP1250"},       {0x1b, "CP1250"},       {0x1c, "CP1250"},   {0x24, "CP1250"},
    {0x08, "CP1253"},       {0x1f, "CP1254"},       {0x0d, "CP1255"},       {0x01, "CP1256"},   {0x29, "CP1256"},
    {0x25, "CP1257"},       {0x26, "CP1257"},       {0x27, "CP1257"},       {0x1e, "CP874"},    {0x2a, "CP1258"}};

const char* encoding_of_language(unsigned long language) {
  for (const LanguageEncoding& one : kLanguageEncodings)
    if (one.language == language || one.language == (language & 0x3ff)) return one.encoding;
  return "CP1252";
}

// Text of that encoding as UTF-8; what is none becomes U+FFFD. UTF-8 stays.
std::string in_utf8(const std::string& text, const char* encoding) {
  if (is_whole_utf8(text)) return text;
  const iconv_t converter = iconv_open("UTF-8", encoding);
  if (reinterpret_cast<std::intptr_t>(converter) == -1) return text;
  std::string made;
  char block[4096];
  char* from = const_cast<char*>(text.data());
  std::size_t left = text.size();
  while (left > 0) {
    char* to = block;
    std::size_t room = sizeof block;
    const bool is_stuck = iconv(converter, &from, &left, &to, &room) == static_cast<std::size_t>(-1) && to == block;
    made.append(block, to);
    if (!is_stuck) continue;
    made += "\ufffd";
    ++from;
    --left;
  }
  iconv_close(converter);
  return made;
}

// Cuts the next word off, with what is around it.
std::string next_word(std::string_view& rest) {
  constexpr std::string_view kBlanks = " \t\r";
  rest.remove_prefix(std::min(rest.find_first_not_of(kBlanks), rest.size()));
  std::string word(rest.substr(0, rest.find_first_of(kBlanks)));
  rest.remove_prefix(word.size());
  return word;
}

// What a project says.
class HtmlHelpTables {
 public:
  HtmlHelpTables(const Source& source, const SourceTree& pages, Manual& manual)
      : source_(source), pages_(pages), manual_(manual), project_(source.find(".hhp")) {
    for (const std::string& name : pages.names()) names_.try_emplace(lower_case(name), name);
  }

  // Without a project, as where a help file was unpacked, there are contents and keywords.
  void take_all() {
    const std::string project = source_.read_file(project_).value_or("");
    for_each_line(project, [this](const std::string& line) {
      if (line.starts_with("Language="))
        encoding_ = encoding_of_language(std::strtoul(line.c_str() + 9, nullptr, 16));
    });
    for_each_line(in_utf8(project, encoding_), [this](const std::string& line) { take_line(line); });
    tell(manual_.notes, "headers with context ids that are not there; name them behind the folder", missing_);
    for (const auto& [word, target] : aliases_) add(word, target, Rank::kContext);
    for (const auto& [word, number] : numbers_)
      if (const auto found = aliases_.find(word); found != aliases_.end()) add(number, found->second, Rank::kContext);
    take_contents(contents_.empty() ? source_.find(".hhc") : file_at(contents_));
    take_keywords(keywords_.empty() ? source_.find(".hhk") : file_at(keywords_));
  }

 private:
  static void for_each_line(std::string_view rest, const auto& take) {
    while (!rest.empty()) {
      const std::string line(rest.substr(0, rest.find('\n')));
      rest.remove_prefix(std::min(line.size() + 1, rest.size()));
      take(folded_space(line));
    }
  }

  void take_line(const std::string& line) {
    if (line.starts_with('[')) section_ = lower_case(line);
    const std::size_t sign = line.find('=');
    const std::string name = folded_space(line.substr(0, sign));
    const std::string value = sign == std::string::npos ? "" : folded_space(line.substr(sign + 1));
    if (line.starts_with('#')) return take_directive(line);
    if (section_ == "[options]") take_option(lower_case(name), value);
    if (section_ == "[alias]" && !value.empty() && !name.starts_with(';'))
      aliases_[name] = target_at(project_, folded_space(value.substr(0, value.find(';'))));
  }

  void take_option(const std::string& name, const std::string& value) {
    if (name == "title") manual_.title = value;
    if (name == "default topic") manual_.start = target_at(project_, value).page;
    if (name == "contents file") contents_ = value;
    if (name == "index file") keywords_ = value;
  }

  // Headers have words for numbers; lists of aliases may lie in files too. Each file is read once, and names no other.
  void take_directive(std::string_view line) {
    const std::string directive = next_word(line);
    if (directive == "#define") {
      const std::string word = next_word(line);
      const std::string number = next_word(line);
      char* end = nullptr;
      const unsigned long value = std::strtoul(number.c_str() + (number.starts_with('(') ? 1 : 0), &end, 0);
      if (end != number.c_str() && !word.empty()) numbers_[word] = std::to_string(value);
    } else if (directive == "#include" && !is_included_) {
      include(folded_space(line));
    }
  }

  void include(std::string name) {
    std::erase_if(name, [](char c) { return c == '"' || c == '<' || c == '>'; });
    if (included_.size() + missing_.size() == kMostHeaders) return;
    std::string found = file_at(name);
    // Headers of the host lie beside the project or anywhere: then by their name alone.
    if (!pages_.has(found)) found = source_.find(lower_case(name.substr(name.find_last_of("\\/") + 1)));
    const std::optional<std::string> text = source_.read_file(found);
    if (!text) return missing_.push_back(name);
    if (!included_.insert(found).second) return;
    is_included_ = true;
    for_each_line(in_utf8(*text, encoding_), [this](const std::string& line) { take_line(line); });
    is_included_ = false;
  }

  // A project may lie outside of the pages: then its names begin at them.
  LinkTarget target_at(const std::string& table, std::string href) const {
    std::ranges::replace(href, '\\', '/');
    while (href.starts_with('/')) href.erase(0, 1);
    LinkTarget target = target_of_entry(pages_.has(table) ? table : "", href);
    if (const auto found = names_.find(lower_case(target.page)); found != names_.end()) target.page = found->second;
    return target;
  }
  std::string file_at(const std::string& name) const { return target_at(project_, name).page; }

  void add(const std::string& name, const LinkTarget& target, Rank rank) {
    if (!target.page.empty() || rank == Rank::kContext)
      manual_.add_topic({name, target.page, target.place, "", rank});
  }

  // What an object of a table says: its values of each name, in their order.
  static std::vector<std::string> values_of(Element object, std::string_view name) {
    std::vector<std::string> values;
    for (Element at = object.next_within(object); at; at = at.next_within(object))
      if (at.is("param") && lower_case(at.attribute("name")) == name)
        values.push_back(folded_space(at.attribute("value")));
    return values;
  }

  // Tables are pages with lists in lists, whose entries are objects.
  void for_each_entry(const std::string& table, const auto& take) {
    const Markup markup = Markup::page(in_utf8(source_.read_file(table).value_or(""), encoding_));
    visit_nested(markup.root(), "ul", [&](Element at, int depth) {
      if (at.is("object") && lower_case(at.attribute("type")) == "text/sitemap")
        take(std::max(depth - 1, 0), values_of(at, "name"), values_of(at, "local"));
    });
  }

  void take_contents(const std::string& table) {
    for_each_entry(table,
                   [&](int depth, const std::vector<std::string>& names, const std::vector<std::string>& files) {
                     const LinkTarget target = files.empty() ? LinkTarget() : target_at(table, files.front());
                     if (!names.empty()) manual_.add_chapter({depth, names.front(), target.page, target.place});
                   });
  }

  void take_keywords(const std::string& table) {
    NestedKeywords keywords;
    for_each_entry(table,
                   [&](int depth, const std::vector<std::string>& names, const std::vector<std::string>& files) {
                     if (names.empty()) return;
                     const std::string& name = keywords.next(depth, names.front());
                     if (!files.empty()) add(name, target_at(table, files.front()), Rank::kKeyword);
                   });
  }

  const Source& source_;
  const SourceTree& pages_;
  Manual& manual_;
  const std::string project_;
  std::map<std::string, std::string> names_;  // of files, by their lower case
  const char* encoding_ = "CP1252";
  std::string section_;
  std::string contents_;
  std::string keywords_;
  std::map<std::string, LinkTarget> aliases_;
  std::map<std::string, std::string> numbers_;
  std::set<std::string> included_;
  std::vector<std::string> missing_;
  bool is_included_ = false;
};

class HtmlHelpReader : public Reader {
 public:
  const char* kind() const override { return "HTML Help"; }

  bool recognises(const Source& source) const override {
    return !source.find(".hhp").empty() || !source.find(".hhc").empty();
  }

  void read(const Source& source, const SourceTree& pages, Manual& manual) override {
    HtmlHelpTables(source, pages, manual).take_all();
  }
};

}  // namespace

std::unique_ptr<Reader> html_help_reader() { return std::make_unique<HtmlHelpReader>(); }

}  // namespace olh_import
