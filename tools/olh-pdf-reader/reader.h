// What olh-pdf-reader is asked for, and how it does that.
//
// Knows    the library's three command lines for a PDF reader; when a PDF goes to a reader and when it becomes text, how
//          a place is reached in a reader that knows only pages, and what is said when it cannot be reached.
// Not      which reader (choice), how it is called (programs), how it is started (adapter).
// For      main.
#ifndef OLH_TOOLS_OLH_PDF_READER_READER_H
#define OLH_TOOLS_OLH_PDF_READER_READER_H

#include "adapter.h"

namespace olh_viewers {

Request reader_request(const Words& words);

// Returns an ExitStatus.
int answer_as_reader(const Request& request, const Trace& trace);

}  // namespace olh_viewers

#endif
