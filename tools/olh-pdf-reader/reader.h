// Doing what olh-pdf-reader was asked for.
//
// Knows    when a PDF goes to a reader and when it becomes text, how a place is reached in a reader that knows only
//          pages, and what is said when it cannot be reached.
// Not      which reader (choice), how it is called (programs), how it is started (child).
// For      main.
#ifndef OLH_TOOLS_OLH_PDF_READER_READER_H
#define OLH_TOOLS_OLH_PDF_READER_READER_H

#include "request.h"
#include "trace.h"

namespace olh_viewers {

// Shows the file, or only starts the reader. Returns an ExitStatus.
int open_in_reader(const ReaderRequest& request, const Trace& trace);

}  // namespace olh_viewers

#endif
