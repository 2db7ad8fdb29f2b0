// olh-pdf-reader: takes the command lines that the library sends to a PDF reader, and opens a reader of today.
#include <cstdio>
#include <exception>

#include "reader.h"

namespace {

constexpr const char* kHelp =
    "usage: olh-pdf-reader [--text] [--dry-run] [FILE]\n"
    "       olh-pdf-reader [--text] [--dry-run] -openInNewWindow /a nameddest=NAME FILE\n"
    "\n"
    "Opens a PDF in the PDF reader, at a named destination when one is given; in a reader that knows only pages, at "
    "the\n"
    "destination's page. Without a display, or with --text, shows the text of that page on the terminal. --dry-run\n"
    "prints the command that would run, and who chose it.\n"
    "\n"
    "The reader: OLH_PDF_PROGRAM, else the desktop's default, else the first along PATH of evince, okular, atril, "
    "xpdf,\n"
    "mupdf-gl, zathura, qpdfview, mupdf, acroread, else the browser.\n"
    "\n"
    "Exit status: 0 shown, 1 not shown, 2 no reader, 64 wrong use.\n";

int run(const olh_viewers::Words& arguments) {
  using olh_viewers::ReaderRequest;
  const ReaderRequest request = olh_viewers::parse_reader_request(arguments);
  if (request.kind == ReaderRequest::Kind::kHelp) return std::fputs(kHelp, stdout) < 0 ? 1 : 0;
  if (request.kind == ReaderRequest::Kind::kVersion)
    return std::puts("olh-pdf-reader " OLH_PACKAGE_VERSION) < 0 ? 1 : 0;
  const olh_viewers::Trace trace("olh-pdf-reader", arguments);
  if (request.kind == ReaderRequest::Kind::kWrong) {
    trace.complain("this command line is none of mine; see olh-pdf-reader --help.");
    return trace.result(olh_viewers::kExitWrongUse);
  }
  return trace.result(olh_viewers::open_in_reader(request, trace));
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return run(olh_viewers::Words(argv + (argc > 0 ? 1 : 0), argv + argc));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "olh-pdf-reader: %s\n", error.what());
    return olh_viewers::kExitFailed;
  }
}
