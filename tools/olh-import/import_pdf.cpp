#include "import_pdf.h"

#include <sys/resource.h>
#include <zlib.h>

#include <filesystem>
#include <memory>

#include "bounds.h"
#include "carried_text.h"
#include "destination_names.h"
#include "files.h"
#include "manual_origin.h"
#include "pdf_file.h"
#include "pdf_names.h"
#include "refusal.h"
#include "words.h"

namespace olh_import {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kFirstBytes = "%PDF-";
constexpr std::size_t kSearchedForFirstBytes = 1024;

// What this program may take while a PDF is read: what is packed in one may be without end.
class MemoryBound {
 public:
  MemoryBound() {
    getrlimit(RLIMIT_AS, &before_);
    rlimit bound = before_;
    bound.rlim_cur = std::min<rlim_t>(before_.rlim_cur, kMostPdfMemory);
    if (kIsPossible) setrlimit(RLIMIT_AS, &bound);
  }
  ~MemoryBound() {
    if (kIsPossible) setrlimit(RLIMIT_AS, &before_);
  }
  MemoryBound(const MemoryBound&) = delete;
  MemoryBound& operator=(const MemoryBound&) = delete;

 private:
#ifdef __SANITIZE_ADDRESS__  // it takes an address space for itself
  static constexpr bool kIsPossible = false;
#else
  static constexpr bool kIsPossible = sizeof(void*) > 4;
#endif
  rlimit before_ = {};
};

// The bytes of a file, out of its compression where it has one.
std::optional<std::string> unpacked(const std::string& file) {
  if (!olh_viewers::is_regular_file(file)) return std::nullopt;
  const std::unique_ptr<gzFile_s, int (*)(gzFile)> opened(gzopen(file.c_str(), "rb"), gzclose);
  if (!opened) return std::nullopt;
  std::string bytes;
  char block[65536];
  int count = 0;
  while (bytes.size() <= kLargestPdf && (count = gzread(opened.get(), block, sizeof block)) > 0)
    bytes.append(block, static_cast<std::size_t>(count));
  return count == 0 ? std::optional(std::move(bytes)) : std::nullopt;
}

std::string place_of_pdf(const std::string& root, const std::string& name) {
  return root + "/pdfdocs/" + name + ".pdf";
}

std::string needed_bytes(const std::string& file) {
  std::optional<std::string> bytes = unpacked(file);
  if (!bytes) throw Refusal(kNoSource, file + " cannot be read, or is too large.");
  return std::move(*bytes);
}

bool is_compressed(const std::string& file) { return olh_viewers::lower_case(file).ends_with(".gz"); }

std::string title_of(const ImportRequest& asked, const std::string& own) {
  const std::string title = carried_title(asked.title.empty() ? own : asked.title);
  return title.empty() ? asked.name : title;
}

}  // namespace

bool is_pdf_name(std::string_view name) {
  const std::string lower = olh_viewers::lower_case(name);
  return lower.ends_with(".pdf") || lower.ends_with(".pdf.gz");
}

PdfImport::PdfImport(const ImportRequest& asked, const std::string& file)
    : asked_(asked), place_(place_of_pdf(asked.root, asked.name)) {
  const MemoryBound bound;
  put_together(file);
}

PdfImport::PdfImport(const ImportRequest& asked, const std::string& file, Unread)
    : asked_(asked), place_(place_of_pdf(asked.root, asked.name)) {
  const std::string bytes = needed_bytes(file);
  if (bytes.find(kFirstBytes) > kSearchedForFirstBytes) throw Refusal(kNoSource, file + " is no PDF.");
  outcome_.kind = "PDF";
  outcome_.title = title_of(asked, "");
  lay_ready(file, !is_compressed(file), bytes);
}

void PdfImport::put_together(const std::string& file) {
  const std::string bytes = needed_bytes(file);
  PdfFile pdf(bytes, file);
  PdfNames names = names_for_library(pdf);
  outcome_ = {
      "PDF", title_of(asked_, pdf.title()), pdf.pages(), std::move(names.known_tags), std::move(names.same_names),
      {}};
  outcome_.notes = std::move(names.notes);
  const bool needs_title = !pdf.has_visible_title() || pdf.title() != outcome_.title;
  if (asked_.link && is_compressed(file)) throw Refusal(kNoSource, file + " is compressed: it can only be copied.");
  if (asked_.link && !names.added.empty())
    outcome_.notes.push_back(file + " is linked as it is, without the names of " +
                             std::to_string(names.added.size()) + " places: import it without --link");
  if (asked_.link) names.added.clear();
  for (const PdfNames::Added& one : names.added) {
    pdf.add_name(one.name, *one.place);
    outcome_.topics.push_back(*olh_viewers::tag_for(one.name));
  }
  if (needs_title) pdf.set_title(outcome_.title);
  const bool changes = !asked_.link && (needs_title || !names.added.empty());
  lay_ready(file, asked_.link, changes ? pdf.written() : bytes);
}

void PdfImport::lay_ready(const std::string& file, bool link, const std::string& bytes) {
  refuse_what_others_brought(asked_, place_, olh_viewers::origin_of_pdf(place_));
  if (asked_.dry_run) return;
  out_.emplace(place_);
  out_->write("mark", olh_viewers::origin_mark(asked_.verb, clean_text(file, kLargestPage) + "\n"));
  link ? out_->link(fs::canonical(file).string(), "pdf") : static_cast<void>(out_->write("pdf", bytes));
}

void PdfImport::take_place() {
  if (!out_) return;
  make_room(asked_, place_, olh_viewers::origin_of_pdf(place_));
  out_->put("mark", olh_viewers::origin_file_of_pdf(place_));
  out_->put("pdf", place_);
}

std::set<std::string> tags_of_pdf(const std::string& root, const std::string& name) {
  const MemoryBound bound;
  const std::optional<std::string> bytes = unpacked(place_of_pdf(root, name));
  std::set<std::string> tags;
  try {
    if (!bytes) return tags;
    const PdfFile pdf(*bytes, name);
    for (const PdfPlace& place : pdf.named())
      if (const auto tag = olh_viewers::tag_for(place.name)) tags.insert(*tag);
  } catch (const Refusal&) {
  }
  return tags;
}

}  // namespace olh_import
