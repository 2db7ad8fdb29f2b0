// PDFs of strangers: refused, or, once they have the names and the title that they lack, without a lack.
#include <optional>

#include "fuzz.h"
#include "olh-import/pdf_names.h"
#include "olh-import/refusal.h"

namespace {

using olh_import::PdfFile;
using olh_import::PdfNames;
using olh_import::PdfPlace;

// The PDF with all that olh import adds; nothing when it is refused.
std::optional<std::string> completed(const std::string& bytes) try {
  PdfFile pdf(bytes, "product.pdf");
  std::vector<PdfPlace> given;
  if (std::optional<PdfPlace> first = pdf.place_of_page(1)) given.push_back(*first);
  for (PdfPlace& place : given) place.name = "first page";
  const PdfNames names = olh_import::names_for_library(pdf, given);
  for (const PdfNames::Added& one : names.added) pdf.add_name(one.name, *one.place);
  pdf.lead_beside("/");
  pdf.set_title("Title");
  return pdf.written();
} catch (const olh_import::Refusal& refusal) {
  expect(std::string_view(refusal.what()).ends_with('.'), "a refusal is a sentence");
  return std::nullopt;
}

}  // namespace

void try_input(const std::string& input) {
  const std::optional<std::string> made = completed(input);
  if (!made) return;
  const PdfFile again(*made, "product.pdf");
  expect(again.has_visible_title() && again.title() == "Title", "the lists see the title");
  expect(olh_import::names_for_library(again, {}).added.empty(), "no name lacks");
}
