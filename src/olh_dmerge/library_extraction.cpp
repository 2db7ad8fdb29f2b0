// The documents of the root: HTML libraries, PDF documents, and what is both.
//
// Knows    what counts as a document, and where its title comes from.
// Not      how a title is found in a file (title_scan), nor how the lists are written (library_lists).
// For      the driver, as its third step.
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "ascii_case.h"
#include "bounded_text.h"
#include "listing.h"
#include "name_index.h"
#include "paths.h"
#include "registries.h"
#include "step.h"
#include "title_scan.h"

namespace olh {

namespace {

constexpr std::string_view kLibraryDirectory = "/htmldocs/";
constexpr std::string_view kPdfDirectory = "/pdfdocs/";
constexpr std::string_view kNoLibraries[] = {".", "..", "_a_search_tips", "QEL", "qelhelp.htm"};
constexpr std::string_view kPdfExtension = ".pdf";
constexpr std::string_view kBookcaseMark = "_bk_";

bool is_no_library(std::string_view name) {
  for (const std::string_view other : kNoLibraries)
    if (name == other) return true;
  return false;
}

// The records that a step adds while it reads files in the order of the disk: in the end they stand in that of the
// directory.
class AddedRecords {
 public:
  explicit AddedRecords(std::size_t places) : records_(places), before_(lleHead) {}
  // Notes where the record belongs that was added last.
  void note(std::size_t place) noexcept { records_[place] = lleHead; }
  void put_in_order() const noexcept {
    lleHead = before_;
    for (LibListEntry* const record : records_)
      if (record != nullptr) {
        record->next = lleHead;
        lleHead = record;
      }
  }

 private:
  std::vector<LibListEntry*> records_;
  LibListEntry* before_;
};

// The title of a library; its name when its data file gives none, and nothing when that cannot be read. "./" keeps a
// name below its directory that begins with a backslash.
std::optional<std::string> title_of_library(const Listing& libraries, std::string_view name, PieceBlocks& blocks) {
  const std::string path = clean_path({"./", name, "/QELdata/QELAllData.js"});
  RegularFile data_file = open_regular_file(path.c_str(), libraries.descriptor());
  if (!data_file) return std::nullopt;
  blocks.start(std::move(data_file));
  std::optional<std::string> title = library_title(blocks);
  if (blocks.failed()) return std::nullopt;
  return title ? std::move(title) : std::string(name);
}

// Whether all names of a directory are known, or it could not be opened; half a list is none.
bool is_whole(const Listing& listing, std::string_view root, std::string_view directory) {
  if (!listing.failed()) return true;
  std::printf("ERROR: writeLibList: unable to open %s\n", clean_path({root, directory}).c_str());
  return false;
}

bool add_libraries(std::string_view root, PieceBlocks& blocks) {
  const Listing libraries(clean_path({root, kLibraryDirectory}));
  if (!is_whole(libraries, root, kLibraryDirectory)) return false;
  const std::vector<const char*>& names = libraries.names();
  AddedRecords added(names.size());
  for (const auto& [inode, i] : libraries.files()) {
    if (is_no_library(names[i])) continue;
    const auto title = title_of_library(libraries, names[i], blocks);
    if (!title) continue;
    add_document(*title, names[i], kHtmlType);
    added.note(i);
  }
  added.put_in_order();
  return true;
}

// The document name of a file in pdfdocs; "" when it is none.
std::string_view pdf_document_name(std::string_view file) {
  if (file.size() <= kPdfExtension.size() || file.starts_with(kBookcaseMark)) return {};
  return ends_in_any_case(file, kPdfExtension) ? file.substr(0, file.size() - kPdfExtension.size())
                                               : std::string_view();
}

class PdfDocuments {
 public:
  // `before` is the first entry that was there before this call.
  PdfDocuments(std::string_view root, PieceBlocks& blocks, LibListEntry* before)
      : root_(root),
        files_(clean_path({root, kPdfDirectory})),
        added_(files_.names().size()),
        blocks_(blocks),
        documents_(lleHead, before),
        earlier_documents_(before),
        portal_titles_(pdfTitlesHead) {}

  bool add_all() {
    if (!is_whole(files_, root_, kPdfDirectory)) return false;
    const std::vector<bool> untitled = untitled_files();
    for (const auto& [inode, i] : files_.files())
      if (untitled[i]) read(i);
    for (std::size_t i = 0; i < untitled.size(); ++i) take(i, untitled[i]);
    added_.put_in_order();
    return true;
  }

 private:
  // Which files have to be read for their titles; of several spellings of ".pdf" the first.
  std::vector<bool> untitled_files() const {
    std::vector<bool> untitled(files_.names().size());
    std::unordered_set<std::string_view> seen;
    for (std::size_t i = 0; i < untitled.size(); ++i) {
      const std::string_view name = pdf_document_name(files_.names()[i]);
      if (name.empty() || is_listed(name) || portal_titles_.find(name) != nullptr) continue;
      untitled[i] = seen.insert(name).second;
    }
    return untitled;
  }

  bool is_listed(std::string_view name) const {
    return documents_.find(name) != nullptr || earlier_documents_.find(name) != nullptr;
  }

  void take(std::size_t i, bool is_read) {
    const std::string_view name = pdf_document_name(files_.names()[i]);
    if (name.empty()) return;
    if (LibListEntry* known = documents_.find(name)) {
      // A PDF of this call is another spelling of ".pdf": a repetition.
      if (known->type != nullptr && known->type != std::string_view(kPdfType)) discard(known->type);
    } else if (LibListEntry* earlier = earlier_documents_.find(name)) {
      earlier->type = nullptr;  // not freed: the host may have put it there
    } else if (const LibListEntry* titled = portal_titles_.find(name)) {
      add(text_of(titled->title), i);
    } else if (!is_read) {
      read(i);
    }
  }

  void read(std::size_t i) {
    if (const auto title = title_of(files_.names()[i])) add(*title, i);
  }

  // The title of a file, which may be its own name; nothing when it cannot be read to its title or its end.
  std::optional<std::string> title_of(std::string_view file) {
    RegularFile pdf = open_regular_file(clean_path({"./", file}).c_str(), files_.descriptor());
    if (!pdf) return std::nullopt;
    blocks_.start(std::move(pdf));
    std::string title = pdf_title(blocks_);
    if (blocks_.failed()) return std::nullopt;
    return title.empty() ? std::string(file) : std::move(title);
  }

  void add(std::string_view title, std::size_t i) {
    add_document(title, pdf_document_name(files_.names()[i]), kPdfType);
    documents_.add(lleHead);
    added_.note(i);
  }

  std::string_view root_;
  Listing files_;
  AddedRecords added_;
  PieceBlocks& blocks_;
  NameIndex documents_;  // of this call
  NameIndex earlier_documents_;
  NameIndex portal_titles_;
};

bool add_all_documents(std::string_view root) {
  PieceBlocks blocks;
  LibListEntry* const before = lleHead;
  return add_libraries(root, blocks) && PdfDocuments(root, blocks, before).add_all();
}

}  // namespace

}  // namespace olh

int extractLibList(char* root) noexcept {
  return olh::run_step(DMERGE_RESULT_UNWRITABLE, root, [root](std::string_view directory) {
    return olh::add_all_documents(directory) ? writeLibList(root) : int{DMERGE_RESULT_UNWRITABLE};
  });
}
