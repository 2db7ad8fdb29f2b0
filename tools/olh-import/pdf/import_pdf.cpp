#include "import_pdf.h"

#include <sys/resource.h>
#include <unistd.h>

#include <charconv>
#include <cstdlib>
#include <filesystem>

#include "bounds.h"
#include "carried_text.h"
#include "destination_names.h"
#include "files.h"
#include "manual_origin.h"
#include "pdf_bytes.h"
#include "pdf_file.h"
#include "pdf_in_pages.h"
#include "pdf_names.h"
#include "refusal.h"
#include "words.h"

#ifndef __has_feature
#define __has_feature(name) 0
#endif

namespace olh_import {

namespace fs = std::filesystem;

namespace {

// What this program may take while a PDF is read: what is packed in one may be without end.
class MemoryBound {
 public:
  MemoryBound() {
    getrlimit(RLIMIT_AS, &before_);
    rlimit bound = before_;
    // Addresses and what is there of them, in pages: what is there goes off what it may take.
    const std::string statm = olh_viewers::content_of("/proc/self/statm");
    char* rest = nullptr;
    const rlim_t addresses = std::strtoull(statm.c_str(), &rest, 10) * page_size();
    const rlim_t taken = std::strtoull(rest, nullptr, 10) * page_size();
    const rlim_t most = addresses + kMostPdfMemory - std::min<rlim_t>(taken, kMostPdfMemory);
    bound.rlim_cur = std::min(before_.rlim_cur, most);
    if (kIsPossible) setrlimit(RLIMIT_AS, &bound);
  }
  ~MemoryBound() {
    if (kIsPossible) setrlimit(RLIMIT_AS, &before_);
  }
  MemoryBound(const MemoryBound&) = delete;
  MemoryBound& operator=(const MemoryBound&) = delete;

 private:
  static rlim_t page_size() { return static_cast<rlim_t>(sysconf(_SC_PAGESIZE)); }
#if defined(__SANITIZE_ADDRESS__) || __has_feature(address_sanitizer)  // it takes an address space for itself
  static constexpr bool kIsPossible = false;
#else
  static constexpr bool kIsPossible = sizeof(void*) > 4;
#endif
  rlimit before_ = {};
};

template <typename Action>
void within_memory(const std::string& file, Action action) {
  try {
    const MemoryBound bound;
    action();
  } catch (const std::bad_alloc&) {
    throw Refusal(kNoSource, file + " takes too much memory.");
  }
}

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
  CompletedPdf(const ImportRequest& asked, const std::string& file) : bytes_(file), pdf_(bytes_.stream(), file) {
    for (const std::string& place : asked.places) given_.push_back(given_place(pdf_, file, place));
    names_ = names_for_library(pdf_, given_);
    outcome_ = {"PDF",       title_of(asked, pdf_.title()), pdf_.pages(), names_.known_tags, names_.same_names,
                names_.notes};
  }

  ImportOutcome& outcome() { return outcome_; }
  std::size_t lacking() const { return names_.added.size(); }
  bool shows_title() const { return pdf_.has_visible_title() && pdf_.title() == outcome_.title; }

  void add_all(const std::string& beside) {
    if (!shows_title()) {
      pdf_.set_title(outcome_.title);
      is_changed_ = true;
    }
    for (const PdfNames::Added& one : names_.added) {
      pdf_.add_name(one.name, *one.place);
      outcome_.topics.push_back(*olh_viewers::tag_for(one.name));
      is_changed_ = true;
    }
    if (!beside.empty() && pdf_.lead_beside(beside)) is_changed_ = true;
  }
  // The same bytes where nothing was added.
  void write(std::FILE* to) {
    bytes_.copy(to);
    if (is_changed_) pdf_.append_to(to);
  }

 private:
  PdfBytes bytes_;
  PdfFile pdf_;
  std::vector<PdfPlace> given_;
  PdfNames names_;
  ImportOutcome outcome_;
  bool is_changed_ = false;
};

}  // namespace

PdfImport::PdfImport(const ImportRequest& asked, const std::string& file)
    : asked_(asked), place_(asked.place_of_pdf()) {
  within_memory(file, [&] { put_together(file); });
}

PdfImport::PdfImport(const ImportRequest& asked, const std::string& file, Unread)
    : asked_(asked), place_(asked.place_of_pdf()) {
  const PdfBytes bytes(file);
  if (!bytes.is_pdf()) throw Refusal(kNoSource, file + " is no PDF.");
  outcome_.kind = "PDF";
  outcome_.title = title_of(asked, "");
  lay_ready(file, !is_compressed(file), [&](std::FILE* to) { bytes.copy(to); });
}

void PdfImport::put_together(const std::string& file) {
  if (asked_.link && is_compressed(file)) throw Refusal(kNoSource, file + " is compressed: it can only be copied.");
  CompletedPdf pdf(asked_, file);
  if (!asked_.link) pdf.add_all("");
  outcome_ = pdf.outcome();
  if (asked_.link && pdf.lacking() != 0)
    outcome_.notes.push_back(file + " is linked as it is, without the names of " + std::to_string(pdf.lacking()) +
                             " places: import it without --link");
  if (asked_.link && !pdf.shows_title())
    outcome_.notes.push_back(file + " is linked as it is, without the title \"" + outcome_.title +
                             "\": import it without --link");
  lay_ready(file, asked_.link, [&](std::FILE* to) { pdf.write(to); });
}

void PdfImport::lay_ready(const std::string& file, bool link, const std::function<void(std::FILE*)>& write) {
  refuse_what_others_brought(asked_, place_, olh_viewers::origin_of_pdf(place_));
  if (asked_.dry_run) return;
  out_.emplace(place_);
  out_->write("mark", olh_viewers::origin_mark(asked_.verb, clean_text(file, kLargestPage) + "\n"));
  link ? out_->link(fs::canonical(file).string(), "pdf") : static_cast<void>(out_->write("pdf", write));
}

void PdfImport::take_place() {
  if (!out_) return;
  make_room(asked_, place_, olh_viewers::origin_of_pdf(place_));
  put_mark();
  const PdfInPages in_pages(asked_);
  const bool was_in_pages = in_pages.is_there();
  out_->put("pdf", place_);
  if (was_in_pages) in_pages.forget();
}

void PdfImport::take_place_with(OutputFolder& pages) {
  refuse_what_others_brought(asked_, place_, olh_viewers::origin_of_pdf(place_));
  put_mark();
  if (PdfInPages(asked_).lay_into(pages, *out_)) return pages.take_place();
  const NoSignals between_pages_and_pdf;
  const bool has_pages = fs::exists(asked_.place_of_pages());
  if (!has_pages) out_->put("pdf", place_);  // a new PDF alone is better than new pages with an old one
  pages.take_place();
  if (has_pages) out_->put("pdf", place_);
}

void PdfImport::put_mark() {
  std::error_code failed;
  fs::create_directory(fs::path(place_).parent_path(), failed);
  out_->put("mark", olh_viewers::origin_file_of_pdf(place_));
}

ImportOutcome write_pdf(const ImportRequest& asked, const std::string& from, const std::string& to,
                        const std::string& beside) {
  ImportOutcome outcome;
  within_memory(from, [&] {
    CompletedPdf pdf(asked, from);
    pdf.add_all(beside);
    outcome = pdf.outcome();
    if (asked.dry_run) return;
    const OutputFolder out(to);
    out.write("pdf", [&](std::FILE* made) { pdf.write(made); });
    out.put("pdf", to);
  });
  return outcome;
}

std::set<std::string> tags_of_pdf(const ImportRequest& asked) {
  std::set<std::string> tags;
  try {
    within_memory(asked.name, [&] {
      const PdfBytes bytes(asked.place_of_pdf());
      const PdfFile pdf(bytes.stream(), asked.name);
      for (const PdfPlace& place : pdf.named())
        if (const auto tag = olh_viewers::tag_for(place.name)) tags.insert(*tag);
    });
  } catch (const Refusal&) {
  }
  return tags;
}

}  // namespace olh_import
