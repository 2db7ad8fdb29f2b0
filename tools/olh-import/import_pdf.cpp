#include "import_pdf.h"

#include <sys/resource.h>
#include <zlib.h>

#include <charconv>
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

#ifndef __has_feature
#define __has_feature(name) 0
#endif

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
#if defined(__SANITIZE_ADDRESS__) || __has_feature(address_sanitizer)  // it takes an address space for itself
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

// "Getting Started=3"; what follows the last "=" is a page.
PdfPlace given_place(PdfFile& pdf, const std::string& file, const std::string& text) {
  const std::size_t equals = std::min(text.rfind('='), text.size());
  const std::string page = text.substr(std::min(equals + 1, text.size()));
  int number = 0;
  const auto [end, error] = std::from_chars(page.data(), page.data() + page.size(), number);
  std::optional<PdfPlace> place;
  if (equals != 0 && error == std::errc() && end == page.data() + page.size()) place = pdf.place_of_page(number);
  if (!place)
    throw Refusal(kWrongUse,
                  "\"" + text + "\" is no TAG=PAGE; " + file + " has " + std::to_string(pdf.pages()) + " pages.");
  place->name = text.substr(0, equals);
  return *place;
}

// A PDF, and what it is to get.
class CompletedPdf {
 public:
  CompletedPdf(const ImportRequest& asked, const std::string& file) : pdf_(needed_bytes(file), file) {
    for (const std::string& place : asked.places) given_.push_back(given_place(pdf_, file, place));
    names_ = names_for_library(pdf_, given_);
    outcome_ = {"PDF",       title_of(asked, pdf_.title()), pdf_.pages(), names_.known_tags, names_.same_names,
                names_.notes};
  }

  // As long as it gets nothing.
  ImportOutcome& outcome() { return outcome_; }
  std::size_t lacking() const { return names_.added.size(); }

  // The file with all that it is to get; the same bytes where it lacks nothing.
  std::string completed(const std::string& beside) {
    const bool needs_title = !pdf_.has_visible_title() || pdf_.title() != outcome_.title;
    if (needs_title) pdf_.set_title(outcome_.title);
    for (const PdfNames::Added& one : names_.added) {
      pdf_.add_name(one.name, *one.place);
      outcome_.topics.push_back(*olh_viewers::tag_for(one.name));
    }
    const bool leads_elsewhere = !beside.empty() && pdf_.lead_beside(beside);
    return needs_title || leads_elsewhere || lacking() != 0 ? pdf_.written() : pdf_.bytes();
  }

 private:
  PdfFile pdf_;
  std::vector<PdfPlace> given_;
  PdfNames names_;
  ImportOutcome outcome_;
};

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
  if (asked_.link && is_compressed(file)) throw Refusal(kNoSource, file + " is compressed: it can only be copied.");
  CompletedPdf pdf(asked_, file);
  const std::string bytes = asked_.link ? "" : pdf.completed("");
  outcome_ = std::move(pdf.outcome());
  if (asked_.link && pdf.lacking() != 0)
    outcome_.notes.push_back(file + " is linked as it is, without the names of " + std::to_string(pdf.lacking()) +
                             " places: import it without --link");
  lay_ready(file, asked_.link, bytes);
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

ImportOutcome write_pdf(const ImportRequest& asked, const std::string& from, const std::string& to,
                        const std::string& beside) {
  const MemoryBound bound;
  CompletedPdf pdf(asked, from);
  const std::string bytes = pdf.completed(beside);
  if (!asked.dry_run) {
    const OutputFolder out(to);
    out.write("pdf", bytes);
    out.put("pdf", to);
  }
  return std::move(pdf.outcome());
}

std::set<std::string> tags_of_pdf(const std::string& root, const std::string& name) {
  const MemoryBound bound;
  std::optional<std::string> bytes = unpacked(place_of_pdf(root, name));
  std::set<std::string> tags;
  try {
    if (!bytes) return tags;
    const PdfFile pdf(std::move(*bytes), name);
    for (const PdfPlace& place : pdf.named())
      if (const auto tag = olh_viewers::tag_for(place.name)) tags.insert(*tag);
  } catch (const Refusal&) {
  }
  return tags;
}

}  // namespace olh_import
