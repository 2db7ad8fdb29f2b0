#include "programs.h"

#include <array>
#include <filesystem>
#include <initializer_list>

#include "url.h"

namespace olh_viewers {

namespace {

// Browsers show a PDF at a name or a page through the fragment; those without these forms open its first page.
const Words kNamed = {"%u#nameddest=%e"};
const Words kPaged = {"%u#page=%n"};
const Words kNone = {};

// Newer ones keep new profiles below the directory for settings. On the bus every edition has a name of its own below
// "org.mozilla".
const Traces kFirefoxTraces = {
    {".mozilla/firefox/*/lock", "%c/mozilla/firefox/*/lock", "snap/firefox/common/.mozilla/firefox/*/lock",
     "snap/firefox/common/.config/mozilla/firefox/*/lock", "snap/firefox/current/.config/mozilla/firefox/*/lock"},
    "org.mozilla",
    "firefox"};
const Traces kEpiphanyTraces = {{}, "org.gnome.Epiphany", "epiphany"};

const Words kChromiumLocks = {"%c/chromium/SingletonLock", "snap/chromium/common/chromium/SingletonLock"};

// Chromium and its kin differ in the directory of their settings.
Program chromium_like(std::string_view name, const Words& locks, std::string_view process) {
  return {name, {"%u"}, kNamed, kPaged, {locks, "", process}};
}

// Epiphany drops the fragment of a file:// address that has no query. "falkon --new-tab" opens an empty tab beside the page.
const std::array kBrowsers = {
    Program{"firefox-esr", {"--new-tab", "%u"}, kNamed, kPaged, kFirefoxTraces, true},
    Program{"firefox", {"--new-tab", "%u"}, kNamed, kPaged, kFirefoxTraces, true},
    chromium_like("chromium", kChromiumLocks, "chrom"),
    chromium_like("chromium-browser", kChromiumLocks, "chrom"),
    chromium_like("google-chrome", {"%c/google-chrome/SingletonLock"}, "chrome"),
    chromium_like("google-chrome-stable", {"%c/google-chrome/SingletonLock"}, "chrome"),
    chromium_like("brave-browser", {"%c/BraveSoftware/Brave-Browser/SingletonLock"}, "brave"),
    chromium_like("microsoft-edge", {"%c/microsoft-edge/SingletonLock"}, "msedge"),
    chromium_like("vivaldi", {"%c/vivaldi/SingletonLock"}, "vivaldi"),
    Program{"epiphany", {"%q"}, kNone, kNone, kEpiphanyTraces},
    Program{"epiphany-browser", {"%q"}, kNone, kNone, kEpiphanyTraces},
    Program{"falkon", {"%u"}, kNone, kNone, {{}, "org.kde.Falkon", "falkon"}},
    Program{"konqueror", {"%u"}, kNone, kNone, {{}, "org.kde.konqueror", "konqueror"}},
};

// Readers that keep a window for a file keep its page too, unless they are told one.
const std::array kReaders = {
    Program{"evince", {"%f"}, {"--named-dest=%d", "%f"}, {"-i", "%n", "%f"}, {{}, "", "evince"}},
    Program{"okular",
            {"--unique", "%u"},
            {"--unique", "%u#%e"},
            {"--unique", "-p", "%n", "%u"},
            {{}, "org.kde.okular", "okular"}},
    Program{"atril", {"%f"}, {"-n", "%d", "%f"}, {"-i", "%n", "%f"}, {{}, "", "atril"}},
    Program{"xpdf", {"%f"}, {"%f", "+%d"}, {"%f", "%n"}, {{}, "", "xpdf.real"}, false, true},
    Program{"mupdf-gl", {"%f"}, {"%f", "%d"}, {"%f", "%n"}, {{}, "", "mupdf-gl"}},
    Program{"zathura", {"%f"}, kNone, {"-P", "%n", "%f"}, {{}, "org.pwmt.zathura", "zathura"}},
    Program{"qpdfview", {"--unique", "%f"}, kNone, {"--unique", "%f#%n"}, {{}, "", "qpdfview"}},
    Program{"mupdf", {"%f"}, kNone, {"%f", "%n"}, {{}, "", "mupdf"}},
    Program{"acroread", {"%f"}, {"-openInNewWindow", "/a", "nameddest=%d", "%f"}, kNone, {{}, "", "acroread"}},
};

// xdg-open reaches the browser of the host from inside a Flatpak or a Snap too. "open" is that of macOS, where
// it has not been tried; elsewhere that name is another program's.
const std::array kOpeners = {
#ifdef __APPLE__
    Program{"open", {"%u"}, kNamed, kPaged, {}, false, false, true},
#endif
    Program{"xdg-open", {"%u"}, kNamed, kPaged, {}, false, false, true},
    Program{"gio", {"open", "%u"}, {"open", "%u#nameddest=%e"}, {"open", "%u#page=%n"}, {}, false, false, true},
};

const std::array kWindowsOpeners = {
    Program{"wslview", {"%u"}, kNamed, kPaged, {}},
    Program{"explorer.exe", {"%u"}, kNamed, kPaged, {}, false, false, false, true},
};

std::string value_of(char placeholder, const Place& place) {
  switch (placeholder) {
    case 'u':
    case 'U':
      return place.url;
    case 'q':
      return with_query(place.url);
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

const Program* row_in(std::initializer_list<std::span<const Program>> tables, std::string_view name) {
  for (const std::span<const Program> table : tables)
    for (const Program& program : table)
      if (program.name == name) return &program;
  return nullptr;
}

}  // namespace

std::span<const Program> browsers() { return kBrowsers; }

std::span<const Program> pdf_readers() { return kReaders; }

std::span<const Program> openers() { return kOpeners; }

std::span<const Program> windows_openers() { return kWindowsOpeners; }

Words names_of(const std::string& path) {
  Words names = {std::filesystem::path(path).filename().string()};
  std::error_code failed;
  const std::filesystem::path target = std::filesystem::canonical(path, failed);
  if (!failed) names.push_back(target.filename().string());
  return names;
}

const Program* program_named(std::string_view name) { return row_in({browsers(), pdf_readers()}, name); }

const Program* program_at(const std::string& path) {
  for (const std::string& name : names_of(path))
    if (const Program* row = program_named(name)) return row;
  return nullptr;
}

const Program* opener_at(const std::string& path) {
  for (const std::string& name : names_of(path))
    if (const Program* row = row_in({openers(), windows_openers()}, name)) return row;
  return nullptr;
}

Words filled(const Words& words, const Place& place) {
  Words result;
  result.reserve(words.size());
  for (const std::string& word : words) result.push_back(filled(word, place));
  return result;
}

}  // namespace olh_viewers
