#include "text_view.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>

#include "child.h"
#include "display.h"
#include "files.h"
#include "half_dump.h"
#include "page_places.h"
#include "pdf_places.h"
#include "topic_page.h"
#include "url.h"
#include "visible.h"
#include "words.h"

namespace olh_viewers {

namespace {

constexpr int kWidestText = 100;
constexpr int kMillisecondsForText = 10000;
constexpr std::size_t kLinesNearby = 20;

// Without scripts of its own: a page must not make w3m run one of this machine's.
const Words kW3m = {"w3m", "-o", "cgi_bin=", "-o", "use_dictcommand=0", "-I", "UTF-8", "-O", "UTF-8"};

Words w3m(const Words& more) {
  Words words = kW3m;
  words.insert(words.end(), more.begin(), more.end());
  return words;
}

std::string columns() {
  winsize size = {};
  const bool known = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 20;
  return std::to_string(known ? std::min<int>(size.ws_col, kWidestText) : 80);
}

std::string fetch(const std::string& url) {
  if (is_file_url(url)) return content_of(file_of(url));
  return output_of(w3m({"-dump_source", url})).value_or("");
}

// A page as lines of text, by a form of w3m's: -dump, or -halfdump, which leaves tags with places in the same lines.
std::optional<std::string> page_as(const char* form, const std::string& url) {
  Words words = w3m({"-o", "display_link_number=1", form, "-cols", columns()});
  if (!is_file_url(url)) {
    words.push_back(url);
    return output_of(words);
  }
  words.insert(words.end(), {"-T", "text/html"});
  const std::string file = file_of(url);
  const std::string folder = file.substr(0, file.rfind('/') + 1);
  return is_readable_file(file) ? output_of(words, file, kMillisecondsForText, folder) : std::nullopt;
}

// What a line says in either form: its ASCII letters and digits outside tags and character references, since other
// characters may be a reference in one form only; "*" for a line that has other characters alone.
std::string letters_of(std::string_view line) {
  std::string letters;
  bool is_blank = true;
  char until = 0;  // the end of the tag or the reference that this is in
  for (std::size_t at = 0; at < line.size(); ++at) {
    const char c = line[at];
    if (until != 0) {
      if (c == until) until = 0;
      continue;
    }
    if (c == '<') until = '>';
    if (c == '&' && line.substr(at + 1, 1) != " " && line.find(';', at) != std::string_view::npos) until = ';';
    is_blank = is_blank && (c == ' ' || c == '<');
    if (std::isalnum(static_cast<unsigned char>(c)) != 0) letters += c;
  }
  return letters.empty() && !is_blank ? "*" : letters;
}

// The half dump has a line more or less than the text now and then: the line that says the same is looked for nearby.
std::size_t nearest_line(const Words& text, std::string_view line, std::size_t at) {
  const std::string wanted = letters_of(line);
  for (std::size_t off = 0; off <= kLinesNearby; ++off)
    for (const std::size_t near : {at - std::min(off, at), at + off})
      if (near < text.size() && letters_of(text[near]) == wanted) return near;
  return std::min(at, text.size());
}

// The text of a page from a place on ("": all of it). `is_there` says whether the place was found.
std::optional<std::string> text_from_place(const std::string& url, const std::string& place, bool& is_there) {
  std::optional<std::string> text = page_as("-dump", url);
  if (!text || place.empty()) return text;
  const std::string tagged = half_dump_as_utf8(page_as("-halfdump", url).value_or(""));
  const std::optional<std::size_t> before = lines_before_place(tagged, place);
  is_there = before.has_value();
  if (!is_there) return text;
  const Words lines = lines_of(*text), tagged_lines = lines_of(tagged);
  std::size_t from = 0;
  const std::size_t first = nearest_line(lines, *before < tagged_lines.size() ? tagged_lines[*before] : "", *before);
  for (std::size_t line = 0; line < first; ++line) from += lines[line].size() + 1;
  return text->substr(std::min(from, text->size()));
}

void print(const std::string& heading, const std::string& text, WhyText why, bool caller_waits) {
  const std::string reason = why == WhyText::kNoDisplay ? "No display, so here is the text of " : "The text of ";
  print_text(visible_page("[" + reason + heading + "]\n\n" + text), why == WhyText::kAsked || caller_waits);
}

}  // namespace

std::optional<WhyText> reason_for_text(bool is_asked, bool needs_display) {
  if (is_asked) return WhyText::kAsked;
  return !needs_display || has_display() ? std::nullopt : std::optional(WhyText::kNoDisplay);
}

bool can_show_page_as_text() { return !find_program("w3m").empty(); }

int show_page_as_text(const std::string& url, WhyText why, bool caller_waits, const Trace& trace) {
  const std::string pdf = is_file_url(url) ? file_of(url) : "";
  if (pdf.ends_with(".pdf")) return show_pdf_as_text(pdf, std::string(fragment_of(url)), why, trace);
  if (!can_show_page_as_text()) {
    trace.complain("there is no display, and no w3m to show text with. Install the package w3m, or open " + url);
    return kExitFailed;
  }
  const TextPage page = page_without_scripts(url, fetch);
  if (!page.missing.empty())
    trace.complain("the topic \"" + page.missing + "\" is not in the manual's topic table; this is its start page.");
  const std::string fragment = decoded(fragment_of(page.url));
  const std::string place = fragment.find('=') == std::string::npos ? fragment : "";  // "context=..." is for scripts
  bool is_there = true;
  const std::optional<std::string> text = text_from_place(page.url, place, is_there);
  if (!text || text->empty()) {
    trace.complain("the page " + page.url + " cannot be read.");
    return kExitFailed;
  }
  if (!is_there) trace.complain("the place \"" + place + "\" is not found; this is the beginning of its page.");
  trace.note("text of " + page.url);
  print(page.url, *text, why, caller_waits);
  return kExitShown;
}

int show_pdf_as_text(const std::string& file, const std::string& destination, WhyText why, const Trace& trace) {
  const PdfPlace place = destination.empty() ? PdfPlace{Found::kYes, 1} : place_of_destination(file, destination);
  if (place.found == Found::kNo)
    trace.complain(file + " has no destination \"" + destination + "\"; this is its first page.");
  const std::string page = std::to_string(place.page);
  const std::optional<std::string> text =
      output_of({"pdftotext", "-layout", "-f", page, "-l", page, as_argument(file), "-"});
  if (!text) {
    trace.complain(find_program("pdftotext").empty()
                       ? "there is no pdftotext to show text with. Install the package poppler-utils, or open " + file
                       : "the document " + file + " cannot be read.");
    return kExitFailed;
  }
  trace.note("text of " + file + ", page " + page);
  const std::optional<int> pages = page_count(file);
  print(file + ", page " + page + (pages ? " of " + std::to_string(*pages) : ""), *text, why, false);
  return kExitShown;
}

}  // namespace olh_viewers
