#include "manual_files.h"

#include <algorithm>
#include <cctype>

#include "carried_text.h"

namespace olh_import {

namespace {

constexpr std::size_t kLongestLanguage = 35;

constexpr const char* kHead =
    "\">\n"
    "<head>\n"
    "<meta charset=\"utf-8\">\n"
    "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
    "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; script-src 'self'; style-src 'self'; "
    "img-src 'self' data:; connect-src 'self'; frame-src 'self'; form-action 'self'; base-uri 'none'\">\n"
    "<link rel=\"icon\" href=\"../QEL/lib/favicon.svg\">\n"
    "<title>Contents - ";
constexpr const char* kBody =
    "</title>\n"
    "<link rel=\"stylesheet\" href=\"../QEL/lib/manual.css\">\n"
    "<script src=\"../QEL/lib/page.js\"></script>\n"
    "<script src=\"../QEL/lib/imported.js\"></script>\n"
    "</head>\n"
    "<body>\n"
    "<header class=\"bar\"><a href=\"index.htm\">";
constexpr const char* kEnd =
    "</main>\n"
    "</body>\n"
    "</html>\n";

constexpr const char* kMain =
    "</h1>\n"
    "<p class=\"note\" id=\"missing\" role=\"status\"></p>\n"
    "<noscript><p class=\"note\">If a program sent you here, the topic that it meant is in the address. Opening it "
    "needs JavaScript; without it, choose from the contents below.</p></noscript>\n"
    "<nav class=\"contents\" aria-label=\"Contents\">";

bool is_language(std::string_view text) {
  const auto is_part = [](unsigned char c) { return std::isalnum(c) != 0 || c == '-'; };
  return !text.empty() && text.size() <= kLongestLanguage && std::ranges::all_of(text, is_part);
}

std::string chapter_line(const Chapter& chapter) {
  const std::string title = as_markup(clean_text(chapter.title, kLongestTitle));
  if (chapter.page.empty()) return "<li dir=\"auto\">" + title;
  return "<li dir=\"auto\"><a href=\"" + address_of(chapter.page, chapter.place) + "\">" + title + "</a>";
}

// Lists in lists. A depth goes down by one at most, however far it says.
std::string contents_list(const std::vector<Chapter>& contents) {
  std::string made;
  int depth = -1;
  for (const Chapter& chapter : contents) {
    const int wanted = std::clamp(chapter.depth, 0, std::min(depth + 1, kDeepestChapter));
    made += wanted > depth ? "\n<ul>\n" : "</li>\n";
    for (; depth > wanted; --depth) made += "</ul></li>\n";
    depth = wanted;
    made += chapter_line(chapter);
  }
  for (; depth >= 0; --depth) made += "</li>\n</ul>";
  return made + "\n";
}

}  // namespace

std::string topic_table_file(const std::string& title, const std::vector<TableLine>& lines) {
  std::string made = "QELAddBookVar(\"DocTitle\",\"" + title + "\");\n";
  for (const TableLine& line : lines)
    made += "QELAddTopic([\"" + line.name + "\",\"" + line.address + "\",\"" + line.title + "\"]);\n";
  return made;
}

std::string start_page_file(const std::string& title, const std::string& language,
                            const std::vector<Chapter>& contents) {
  const std::string text = as_markup(title);
  return "<!DOCTYPE html>\n<html lang=\"" + (is_language(language) ? language : "en") + kHead + text + kBody + text +
         "</a></header>\n<main id=\"topic\">\n<h1 dir=\"auto\">" + text + kMain + contents_list(contents) +
         "</nav>\n" + kEnd;
}

}  // namespace olh_import
