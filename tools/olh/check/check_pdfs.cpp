// Checks of PDF documents: the destinations that topics ask for, links that lead nowhere, the titles that lists show, the endings
// of their names.
#include <filesystem>
#include <set>

#include "checks.h"
#include "destination_names.h"
#include "find.h"
#include "manual_origin.h"
#include "pdf_places.h"
#include "shared.h"

namespace olh {

namespace {

// What a generator called its places differs in pages and PDF, and nobody can change that: an imported manual has one line.
void check_destinations_of(const CheckedRoot& root, const CheckedManual& manual, const std::string& pdf,
                           Findings& findings) {
  const auto places = olh_viewers::destinations_of(place_in_root(root.path, pdf));
  if (!places) return findings.error({pdf}, "cannot be read by pdfinfo");
  std::set<std::string> there;
  for (const olh_viewers::NamedPlace& place : *places) there.insert(place.name);
  const bool is_imported = olh_viewers::is_imported(place_in_root(root.path, "htmldocs/" + manual.name));
  std::size_t missing = 0;
  for (const olh_viewers::TableTopic& topic : manual.topics)
    if (const std::string wanted = olh_viewers::destination_of(topic.name); !there.contains(wanted)) {
      ++missing;
      if (!is_imported)
        findings.warning({pdf}, "has no named destination {} for the topic \"{}\" of the manual of the same name",
                         wanted, topic.name);
    }
  if (is_imported && missing != 0)
    findings.note({pdf},
                  "has no named destination for {} of {} topics of the imported manual of the same name: a PDF "
                  "reader opens its first page for them",
                  std::to_string(missing), std::to_string(manual.topics.size()));
}

}  // namespace

void check_destinations(const CheckedRoot& root, Findings& findings) {
  const bool can_read = olh_viewers::can_read_destinations();
  for (const CheckedManual& manual : root.manuals) {
    const std::string pdf = manual.topics.empty() ? "" : root.pdf_named(manual.name);
    if (pdf.empty()) continue;
    if (root.is_web) {
      findings.note({pdf}, "is on a web server: its named destinations cannot be checked");
    } else if (!can_read) {
      findings.warning({pdf}, "could not be looked into: {}", olh_viewers::kInstallPdfinfo);
    } else {
      check_destinations_of(root, manual, pdf, findings);
    }
  }
}

void check_pdf_links(const CheckedRoot& root, Findings& findings) {
  for (const std::string& name : root.names_in("pdfdocs"))
    if (std::error_code failed;
        !std::filesystem::exists(place_in_root(root.path, "pdfdocs/" + name), failed) && !failed)
      findings.error({"pdfdocs/" + name}, "is a link to a file that is not there");
}

void check_pdf_titles(const CheckedRoot& root, Findings& findings) {
  std::vector<ListedDocument> documents;
  if (root.trial) documents = root.trial->run.documents;
  if (root.is_web) documents = listed_documents(root.path).value_or(documents);
  for (const ListedDocument& one : documents) {
    const bool by_file_name = ends_in_any_pdf(one.title) && without_pdf(one.title) == one.name;
    if (one.pdf && by_file_name)
      findings.warning({"pdfdocs/" + one.title},
                       "has no title that the list generator sees, so that lists show its file name; name it in a "
                       "portal's js/doclist.js, or write an uncompressed pdf:Title into its metadata");
  }
}

void check_pdf_endings(const CheckedRoot& root, Findings& findings) {
  for (const char* directory : {"pdfdocs", "system_admin_docs"})
    for (const std::string& file : root.names_in(directory))
      if (ends_in_any_pdf(file) && !file.ends_with(".pdf"))
        findings.warning({std::string(directory) + "/" + file},
                         "does not end in .pdf as written, so that a help call only finds it by the name \"{}\"",
                         file);
}

}  // namespace olh
