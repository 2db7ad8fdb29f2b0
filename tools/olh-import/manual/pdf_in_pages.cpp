#include "pdf_in_pages.h"

#include <filesystem>

#include "manual_origin.h"
#include "refusal.h"

namespace olh_import {

namespace fs = std::filesystem;

namespace {

constexpr const char* kInPages = "/QELdata/QELDocument.pdf";

}  // namespace

PdfInPages::PdfInPages(const ImportRequest& asked)
    : root_(asked.root),
      place_(asked.place_of_pdf()),
      old_(asked.place_of_pages() + kInPages),
      link_("../htmldocs/" + asked.name + kInPages) {}

// A directory of PDFs that lies elsewhere is one from which the link leads nowhere.
bool PdfInPages::is_there() const {
  std::error_code failed;
  return leads_to_pages() && fs::read_symlink(place_, failed) == link_;
}

bool PdfInPages::leads_to_pages() const {
  std::error_code failed;
  return fs::equivalent(root_ + "/pdfdocs/../htmldocs", root_ + "/htmldocs", failed);
}

bool PdfInPages::lay_into(const OutputFolder& pages, const OutputFolder& pdf) const {
  std::error_code failed;
  fs::rename(pdf.path() + "/pdf", pages.path() + kInPages, failed);
  if (failed) return false;
  if (lead_to_pages(pdf)) return true;
  fs::rename(pages.path() + kInPages, pdf.path() + "/pdf");
  return false;
}

// A PDF that is there gets a second name in the pages first, so that the link shows it until they change.
bool PdfInPages::lead_to_pages(const OutputFolder& pdf) const {
  std::error_code failed;
  if (is_there()) return true;
  if (!leads_to_pages()) return false;
  if (fs::symlink_status(place_, failed).type() != fs::file_type::not_found) {
    fs::remove(old_, failed);
    fs::create_hard_link(place_, old_, failed);
    if (failed) return false;
  }
  try {
    pdf.link(link_, "link");
    pdf.put("link", place_);
    return true;
  } catch (const Refusal&) {
    return false;
  }
}

void PdfInPages::keep_in(const OutputFolder& pages) const {
  std::error_code failed;
  if (!is_there()) return;
  if (!fs::exists(old_, failed)) {  // an import ended before its pages were in place
    fs::remove(place_, failed);
    fs::remove(olh_viewers::origin_file_of_pdf(place_), failed);
    return;
  }
  fs::create_hard_link(old_, pages.path() + kInPages, failed);
  if (failed) fs::copy(old_, pages.path() + kInPages, fs::copy_options::copy_symlinks);
}

void PdfInPages::forget() const {
  std::error_code ignored;
  fs::remove(old_, ignored);
}

}  // namespace olh_import
