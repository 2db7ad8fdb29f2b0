#include "basic_page.h"

#include "generated_file.h"
#include "line_reader.h"
#include "paths.h"
#include "script_line.h"

namespace olh {

namespace {

constexpr std::string_view kDocumentListMark = "<!-- Insert document list here -->";
constexpr std::string_view kReleaseNameMark = "<!-- Insert release name here -->";
constexpr std::string_view kLinkAttributes = "\" class=\"doctagging\" target=\"_blank\">";

void append_rows(std::string& page, const Entries& entries) {
  for (const ListedEntry& entry : entries) {
    if (!entry.is_listed) continue;
    append(page, {"<tr><td>", entry.title, "</td><td class=\"right\">\n"});
    if (entry.has_html)
      append(page, {"<a href=\"../htmldocs/", entry.name, "/index.htm", kLinkAttributes, "HTM</a>\n"});
    if (entry.has_pdf) append(page, {"<a href=\"../pdfdocs/", entry.name, ".pdf", kLinkAttributes, "PDF</a>\n"});
    page += "</td></tr>\n";
  }
}

}  // namespace

void write_basic_page(std::string_view root, const Entries& entries, std::string& text) {
  LineReader page_template(clean_path({root, "/tomedecks/common/html/basic.htm"}).c_str(), kLongestLine);
  if (!page_template) return;
  text.clear();
  for (std::string_view line; page_template.next(line);) {
    if (contains(line, kDocumentListMark))
      append_rows(text, entries);
    else if (!contains(line, kReleaseNameMark))
      text += line;
    else if (releaseName != nullptr)
      append(text, {releaseName, "\n"});
  }
  if (!page_template.failed()) put_list(clean_path({root, "/tomedecks/basic.htm"}), text);
}

}  // namespace olh
