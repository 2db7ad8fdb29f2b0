#include "programs.h"

#include <array>

#include "url.h"

namespace olh_viewers {

namespace {

// Browsers show a PDF at a name or a page through the fragment; those without these forms open its first page.
const Words kNamed = {"%u#nameddest=%e"};
const Words kPaged = {"%u#page=%n"};
const Words kNone = {};

const std::array kBrowsers = {
    Program{"firefox-esr", "firefox-esr", {"--new-tab", "%u"}, kNamed, kPaged, true},
    Program{"firefox", "firefox", {"--new-tab", "%u"}, kNamed, kPaged, true},
    Program{"chromium", "chromium", {"%u"}, kNamed, kPaged, false},
    Program{"chromium-browser", "chromium-browse", {"%u"}, kNamed, kPaged, false},
    Program{"google-chrome", "chrome", {"%u"}, kNamed, kPaged, false},
    Program{"google-chrome-stable", "chrome", {"%u"}, kNamed, kPaged, false},
    Program{"brave-browser", "brave", {"%u"}, kNamed, kPaged, false},
    Program{"microsoft-edge", "msedge", {"%u"}, kNamed, kPaged, false},
    Program{"vivaldi", "vivaldi-bin", {"%u"}, kNamed, kPaged, false},
    Program{"epiphany", "epiphany", {"%u"}, kNone, kNone, false},
    Program{"epiphany-browser", "epiphany", {"%u"}, kNone, kNone, false},
    Program{"falkon", "falkon", {"--new-tab", "%u"}, kNone, kNone, false},
    Program{"konqueror", "konqueror", {"%u"}, kNone, kNone, false},
};

const std::array kReaders = {
    Program{"evince", "evince", {"%f"}, {"--named-dest=%d", "%f"}, {"-i", "%n", "%f"}, false},
    Program{"okular", "okular", {"--unique", "%u"}, {"--unique", "%u#%e"}, {"--unique", "-p", "%n", "%u"}, false},
    Program{"atril", "atril", {"%f"}, {"-n", "%d", "%f"}, {"-i", "%n", "%f"}, false},
    Program{"xpdf", "xpdf", {"%f"}, {"%f", "+%d"}, {"%f", "%n"}, false},
    Program{"mupdf-gl", "mupdf-gl", {"%f"}, {"%f", "%d"}, {"%f", "%n"}, false},
    Program{"zathura", "zathura", {"%f"}, kNone, {"-P", "%n", "%f"}, false},
    Program{"qpdfview", "qpdfview", {"--unique", "%f"}, kNone, {"--unique", "%f#%n"}, false},
    Program{"mupdf", "mupdf", {"%f"}, kNone, {"%f", "%n"}, false},
    Program{"acroread", "acroread", {"%f"}, {"-openInNewWindow", "/a", "nameddest=%d", "%f"}, kNone, false},
};

std::string value_of(char placeholder, const Place& place) {
  switch (placeholder) {
    case 'u':
    case 'U':
      return place.url;
    case 'f':
    case 'F':
      return place.file;
    case 'd':
      return place.destination;
    case 'e':
      return percent_encoded(place.destination);
    case 'n':
      return std::to_string(place.page);
    case '%':
      return "%";
    default:
      return "";
  }
}

std::string filled(const std::string& word, const Place& place) {
  std::string text;
  for (std::size_t i = 0; i < word.size(); ++i)
    if (word[i] == '%' && i + 1 < word.size())
      text += value_of(word[++i], place);
    else
      text += word[i];
  return text;
}

}  // namespace

std::span<const Program> browsers() { return kBrowsers; }

std::span<const Program> pdf_readers() { return kReaders; }

const Program* program_named(std::string_view name) {
  for (const std::span<const Program> table : {browsers(), pdf_readers()})
    for (const Program& program : table)
      if (program.name == name) return &program;
  return nullptr;
}

Words filled(const Words& words, const Place& place) {
  Words result;
  result.reserve(words.size());
  for (const std::string& word : words) result.push_back(filled(word, place));
  return result;
}

}  // namespace olh_viewers
