// olh-pdf-reader: takes the command lines that the library sends to a PDF reader, and opens a reader of today.
#include "reader.h"

namespace {

constexpr const char* kHelp =
    "usage: olh-pdf-reader [--text] [--dry-run] [FILE]\n"
    "       olh-pdf-reader [--text] [--dry-run] -openInNewWindow /a nameddest=NAME FILE\n"
    "\n"
    "Opens a PDF in the PDF reader, at a named destination when one is given; in a reader that knows only pages, at "
    "the\n"
    "destination's page. The name \"page=12\" stands for page 12. Without a display, or with --text, shows the text "
    "of\n"
    "that page on the terminal. --dry-run prints the command that would run, and who chose it.\n"
    "\n"
    "The reader: OLH_PDF_PROGRAM, else the desktop's default, else the first along PATH of evince, okular, atril, "
    "xpdf,\n"
    "mupdf-gl, zathura, qpdfview, mupdf, acroread, else the browser.\n"
    "\n"
    "Exit status: 0 shown, 1 not shown, 2 no reader, 64 wrong use.\n";

}  // namespace

int main(int argc, char** argv) {
  return olh_viewers::run_adapter(
      {"olh-pdf-reader", kHelp, olh_viewers::reader_request, olh_viewers::answer_as_reader}, argc, argv);
}
