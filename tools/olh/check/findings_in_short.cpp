#include "findings_in_short.h"

#include <algorithm>
#include <span>
#include <unordered_map>

#include "find.h"
#include "shared.h"

namespace olh {

namespace {

constexpr std::size_t kLinesOfDocument = 20;
constexpr std::size_t kLinesOfKind = 6;  // of a longer one five examples, and how many others there are
constexpr std::size_t kAll = std::string::npos;
constexpr std::size_t kLongestLine = 200;
constexpr std::size_t kLevelWidth = 9;

using Kind = std::vector<const Finding*>;
using Document = std::vector<Kind>;

// "guide" for htmldocs/guide/index.htm and for pdfdocs/guide.pdf; the file itself where it lies in no such directory.
std::string document_of(const std::string& file) {
  const std::size_t begin = file.find('/') + 1;
  return begin <= 1 ? file : without_pdf(file.substr(begin, file.find('/', begin) - begin));
}

bool is_of(const Kind& kind, const Finding& finding) {
  return kind.front()->level == finding.level && kind.front()->kind == finding.kind;
}

std::vector<Document> documents_in(const Findings& findings) {
  std::vector<Document> documents;
  std::unordered_map<std::string, std::size_t> numbers;
  for (const Finding& one : findings.all()) {
    const auto [number, is_new] = numbers.try_emplace(document_of(one.where.file), documents.size());
    if (is_new) documents.emplace_back();
    Document& document = documents[number->second];
    const auto kind = std::ranges::find_if(document, [&](const Kind& known) { return is_of(known, one); });
    kind == document.end() ? document.push_back({&one}) : kind->push_back(&one);
  }
  for (Document& document : documents)
    std::ranges::stable_sort(document, {}, [](const Kind& kind) { return kind.front()->level; });
  return documents;
}

std::size_t lines_needed(const Document& document, std::size_t lines_of_kind) {
  std::size_t lines = 0;
  for (const Kind& kind : document) lines += std::min(kind.size(), lines_of_kind);
  return lines;
}

// How many lines each kind gets: all that it wants where the document then fits, and two at least, which are an example
// and how many others there are.
std::size_t lines_of_kind_in(const Document& document) {
  if (lines_needed(document, kAll) <= kLinesOfDocument) return kAll;
  std::size_t lines = kLinesOfKind;
  while (lines > 2 && lines_needed(document, lines) > kLinesOfDocument) --lines;
  return lines;
}

void add_finding(const Finding& finding, ShortFindings& in_short) {
  const std::string whole = line_of(finding);
  std::string line = whole;
  for (std::size_t longest_value = 80; longest_value >= 20 && width_of(visible(line)) > kLongestLine;
       longest_value -= 4)
    line = line_of(finding, longest_value);
  in_short.is_cut |= line != whole;
  in_short.lines.push_back(line);
}

void add_kind(const Kind& kind, std::size_t most_lines, ShortFindings& in_short) {
  const std::size_t shown = kind.size() <= most_lines ? kind.size() : most_lines - 1;
  for (const Finding* one : std::span(kind).first(shown)) add_finding(*one, in_short);
  if (shown == kind.size()) return;
  in_short.lines.push_back(padded("", kLevelWidth) + "and " + std::to_string(kind.size() - shown) +
                           " more like these");
  in_short.is_cut = true;
}

}  // namespace

std::string line_of(const Finding& finding, std::size_t longest_value) {
  return padded(name_of(finding.level), kLevelWidth) + sentence_of(finding, longest_value);
}

ShortFindings findings_in_short(const Findings& findings) {
  ShortFindings in_short;
  for (const Document& document : documents_in(findings)) {
    const std::size_t most_lines = lines_of_kind_in(document);
    for (const Kind& kind : document) add_kind(kind, most_lines, in_short);
  }
  return in_short;
}

}  // namespace olh
