// What olh-pdf-reader was asked for.
//
// Knows    the library's three command lines for a PDF reader, and the adapter's own options.
// Not      how it is done (reader).
// For      main.
#ifndef OLH_TOOLS_OLH_PDF_READER_REQUEST_H
#define OLH_TOOLS_OLH_PDF_READER_REQUEST_H

#include "words.h"

namespace olh_viewers {

struct ReaderRequest {
  enum class Kind {
    kWrong,    // nothing of what follows
    kHelp,     // --help
    kVersion,  // --version
    kOpen,     // FILE, or -openInNewWindow /a nameddest=NAME FILE
    kStart     // no file: only the reader
  };
  Kind kind = Kind::kWrong;
  std::string file;
  std::string destination;
  bool as_text = false;  // --text
  bool dry_run = false;  // --dry-run
};

ReaderRequest parse_reader_request(Words arguments);

}  // namespace olh_viewers

#endif
