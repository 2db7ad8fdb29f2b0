#include "import_document.h"

#include <algorithm>
#include <set>

#include "bounds.h"
#include "destination_names.h"
#include "files.h"
#include "import_pdf.h"
#include "manual_origin.h"
#include "notes.h"
#include "pdf_bytes.h"
#include "pdf_in_pages.h"
#include "refusal.h"
#include "topic_table.h"

namespace olh_import {

namespace {

using Names = std::vector<std::string>;

Names topics_in_root(const ImportRequest& asked) {
  const std::string table = asked.place_of_pages() + "/" + olh_viewers::kTopicTable;
  Names names;
  for (const auto& topic : olh_viewers::topics_in_table(olh_viewers::text_of_file(table, kLargestTable).value_or("")))
    names.push_back(topic.name);
  return names;
}

Names tags_in_root(const ImportRequest& asked) {
  const std::set<std::string> tags = tags_of_pdf(asked);
  return {tags.begin(), tags.end()};
}

// Those of `names` for which nothing of `others` has the same form.
Names without_partner(const Names& names, const Names& others, std::string (*form)(std::string_view)) {
  std::set<std::string> there;
  for (const std::string& other : others) there.insert(form(other));
  Names alone;
  std::ranges::copy_if(names, std::back_inserter(alone),
                       [&](const std::string& name) { return !there.contains(form(name)); });
  return alone;
}

// What a host could ask for in one form of the document and not in the other.
void compare(DocumentOutcome& document, const ImportRequest& asked) {
  const Names topics = document.manual ? document.manual->topics : topics_in_root(asked);
  const Names tags = document.pdf ? document.pdf->topics : tags_in_root(asked);
  if (topics.empty() || tags.empty()) return;
  std::vector<std::string>& notes = document.pdf ? document.pdf->notes : document.manual->notes;
  tell(notes, "topics that the PDF has no place for", without_partner(topics, tags, olh_viewers::destination_of));
  tell(notes, "tags of the PDF that are no topics of the pages",
       without_partner(tags, topics, olh_viewers::normal_topic));
}

// The form that this import does not bring stays beside the one that it brings: they may be of two versions.
void tell_what_stays(DocumentOutcome& document, const ImportRequest& asked) {
  const std::string pages = asked.place_of_pages();
  const std::string pdf = asked.place_of_pdf();
  const std::string as_it_was = " stays as an earlier import brought it";
  if (!document.pdf && olh_viewers::is_regular_file(pdf) && !olh_viewers::origin_of_pdf(pdf).empty())
    document.manual->notes.push_back(pdf + as_it_was);
  if (!document.manual && olh_viewers::is_imported(pages)) document.pdf->notes.push_back(pages + as_it_was);
}

}  // namespace

DocumentOutcome import_document(const ImportRequest& asked,
                                const std::function<void(std::size_t, std::size_t)>& progress) {
  ImportRequest pages = asked;
  const auto first_pdf = std::stable_partition(
      pages.sources.begin(), pages.sources.end(),
      [](const std::string& source) { return !is_pdf_name(source) || !olh_viewers::is_regular_file(source); });
  const Names pdfs(first_pdf, pages.sources.end());
  if (pdfs.size() > 1)
    throw Refusal(kWrongUse, "a document has one PDF, and not " + pdfs[0] + " and " + pdfs[1] + ".");
  std::optional<PdfImport> pdf;
  if (!pdfs.empty()) pdf.emplace(asked, pdfs.front());
  pages.sources.erase(first_pdf, pages.sources.end());
  if (!pdf && !asked.places.empty()) throw Refusal(kWrongUse, "--place names a page of a PDF, and there is none.");
  if (pages.sources.empty() && !asked.start.empty()) throw Refusal(kWrongUse, "a PDF begins with its first page.");
  DocumentOutcome document;
  if (!pages.sources.empty())
    document.manual = import_manual(pages, progress, [&](OutputFolder& ready) {
      if (pdf) return pdf->take_place_with(ready);
      PdfInPages(asked).keep_in(ready);
      ready.take_place();
    });
  if (pdf) {
    if (!document.manual) pdf->take_place();
    document.pdf = pdf->outcome();
  }
  compare(document, asked);
  tell_what_stays(document, asked);
  return document;
}

}  // namespace olh_import
