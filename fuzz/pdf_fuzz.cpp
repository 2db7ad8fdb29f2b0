// PDFs of strangers: refused, or, once they have the names and the title that they lack, without a lack.
#include <cstdio>
#include <memory>
#include <optional>

#include "fuzz.h"
#include "pdf_names.h"
#include "refusal.h"

namespace {

using olh_import::PdfFile;
using olh_import::PdfNames;
using olh_import::PdfPlace;

using Stream = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

Stream stream_of(const std::string& bytes) {
  return {fmemopen(const_cast<char*>(bytes.data()), bytes.size(), "rb"), std::fclose};
}

// The PDF with all that olh import adds; nothing when it is refused.
Stream completed(const std::string& bytes) try {
  const Stream stream = stream_of(bytes);
  PdfFile pdf(stream.get(), "product.pdf");
  std::vector<PdfPlace> given;
  if (std::optional<PdfPlace> first = pdf.place_of_page(1)) given.push_back(*first);
  for (PdfPlace& place : given) place.name = "first page";
  const PdfNames names = olh_import::names_for_library(pdf, given);
  for (const PdfNames::Added& one : names.added) pdf.add_name(one.name, *one.place);
  pdf.lead_beside("/");
  pdf.set_title("Title");
  Stream made(std::tmpfile(), std::fclose);
  std::fwrite(bytes.data(), 1, bytes.size(), made.get());
  pdf.append_to(made.get());
  return made;
} catch (const olh_import::Refusal& refusal) {
  expect(std::string_view(refusal.what()).ends_with('.'), "a refusal is a sentence");
  return {nullptr, std::fclose};
}

}  // namespace

void try_input(const std::string& input) {
  if (input.empty()) return;
  const Stream made = completed(input);
  if (!made) return;
  const PdfFile again(made.get(), "product.pdf");
  expect(again.has_visible_title() && again.title() == "Title", "the lists see the title");
  expect(olh_import::names_for_library(again, {}).added.empty(), "no name lacks");
}
