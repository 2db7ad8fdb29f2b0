// The documents of the root: HTML libraries, PDF documents, and what is both.
//
// Knows    what counts as a document, and where its title comes from.
// Not      how a title is found in a file (title_scan), nor how the lists are written (library_lists).
// For      the driver, as its third step.
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "boundary.h"
#include "bounded_text.h"
#include "disk_order.h"
#include "name_index.h"
#include "paths.h"
#include "registries.h"
#include "title_scan.h"

namespace olh {

namespace {

constexpr std::string_view kNoLibraries[] = {"_a_search_tips", "QEL", "qelhelp.htm"};
constexpr std::string_view kPdfExtension = ".pdf";
constexpr std::string_view kBookcaseMark = "_bk_";

bool is_no_library(std::string_view name) {
  for (const std::string_view other : kNoLibraries)
    if (name == other) return true;
  return false;
}

// Files are opened from the directory that lists them: a long path to the root is then walked once, not once a document.
// "./" keeps a name below it that begins with a backslash.

// A library is whatever has a data file; one whose file names no title goes by its own name.
void add_libraries(std::string_view root, PieceBlocks& blocks) {
  const DiskOrder libraries(clean_path({root, "/htmldocs/"}));
  std::string path;
  for (const char* const name : libraries.names()) {
    if (is_no_library(name)) continue;
    const char* const table = put_clean_path(path, {"./", name, "/QELdata/QELAllData.js"});
    RegularFile data_file = open_regular_file(table, libraries.descriptor());
    if (!data_file) continue;
    blocks.start(std::move(data_file));
    const auto title = library_title(blocks);
    if (!blocks.failed()) add_document(title ? std::string_view(*title) : name, name, kHtmlType);
  }
}

// The document name of a file in pdfdocs; "" when it is none.
std::string_view pdf_document_name(std::string_view file) {
  if (file.size() <= kPdfExtension.size() || file.starts_with(kBookcaseMark)) return {};
  std::string extension(file.substr(file.size() - kPdfExtension.size()));
  lcStr(extension.data());
  return extension == kPdfExtension ? file.substr(0, file.size() - kPdfExtension.size()) : std::string_view();
}

// What is listed already is told from the names alone; the files that remain are then read.
class PdfDocuments {
 public:
  PdfDocuments(std::string_view root, PieceBlocks& blocks)
      : files_(clean_path({root, "/pdfdocs/"})),
        blocks_(blocks),
        documents_(lleHead),
        portal_titles_(pdfTitlesHead) {}

  void add_all() {
    for (const char* const file : files_.names()) take(file);
    for (const char* const file : unread_) scan(file);
  }

 private:
  void take(const char* file) {
    const std::string_view name = pdf_document_name(file);
    if (name.empty()) return;
    if (LibListEntry* known = documents_.find(name)) {
      // A PDF known as such is another spelling of ".pdf": a repetition.
      if (known->type != nullptr && known->type != std::string_view(kPdfType)) discard(known->type);
    } else if (const LibListEntry* titled = portal_titles_.find(name)) {
      add(text_of(titled->title), name);
    } else {
      unread_.push_back(file);
    }
  }

  // A file that cannot be read to its title or its end is left out.
  void scan(std::string_view file) {
    const std::string_view name = pdf_document_name(file);
    if (documents_.find(name) != nullptr) return;  // under another spelling of ".pdf"
    RegularFile pdf = open_regular_file(put_clean_path(path_, {"./", file}), files_.descriptor());
    if (!pdf) return;
    blocks_.start(std::move(pdf));
    const std::string title = pdf_title(blocks_);
    if (!blocks_.failed()) add(title.empty() ? file : std::string_view(title), name);
  }

  void add(std::string_view title, std::string_view name) {
    add_document(title, name, kPdfType);
    documents_.add(lleHead);
  }

  DiskOrder files_;
  std::vector<const char*> unread_;
  std::string path_;
  PieceBlocks& blocks_;
  NameIndex documents_;
  NameIndex portal_titles_;
};

}  // namespace

}  // namespace olh

int extractLibList(char* root) noexcept {
  const bool extracted = olh::guarded(false, [root] {
    olh::PieceBlocks blocks;
    olh::add_libraries(olh::text_of(root), blocks);
    olh::PdfDocuments(olh::text_of(root), blocks).add_all();
    return true;
  });
  return extracted ? writeLibList(root) : int{DMERGE_RESULT_UNWRITABLE};
}
