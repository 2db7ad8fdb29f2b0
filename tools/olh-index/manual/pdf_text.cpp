#include "pdf_text.h"

#include <algorithm>

#include "child.h"
#include "files.h"

namespace olh_index {

namespace {

constexpr int kMillisecondsOfPdf = 60000;

// Blanks and line feeds as one blank; a word that a hyphen divides at the end of a line stays divided.
std::string running_text(std::string_view page) {
  std::string text;
  for (const char c : page) {
    const bool is_blank = static_cast<unsigned char>(c) <= ' ';
    if (!is_blank)
      text += c;
    else if (!text.empty() && text.back() != ' ')
      text += ' ';
  }
  return text;
}

}  // namespace

void take_pdf_text(std::string_view text, const std::string& address, IndexedManual& manual) {
  Page page = {address, manual.title, manual.name, {{"", "", "", "", {}}}, {}};
  for (int number = 1; !text.empty(); ++number) {
    const std::string_view one = text.substr(0, text.find('\f'));
    std::string running = running_text(one);
    const std::string shown = std::to_string(number);
    if (!running.empty()) page.sections.push_back({"page=" + shown, "Page " + shown, std::move(running), "", {}});
    text.remove_prefix(std::min(one.size() + 1, text.size()));
  }
  if (page.sections.size() == 1) manual.unsearched = "has no text that could be searched: it is found by its title";
  manual.pages.push_back(std::move(page));
}

void read_pdf(const std::string& file, const std::string& address, IndexedManual& manual) {
  manual.language = "en";
  const std::string program = olh_viewers::find_program("pdftotext");
  const auto text = program.empty()
                        ? std::nullopt
                        : olh_viewers::output_of({program, "-q", "-enc", "UTF-8", file, "-"}, "", kMillisecondsOfPdf);
  take_pdf_text(text.value_or(""), address, manual);
  if (program.empty())
    manual.unsearched = "is found by its title: pdftotext, which gives the text of a PDF, is not installed";
}

}  // namespace olh_index
