// A page or a PDF's place as text on the terminal.
//
// Knows    how w3m makes text of a page and pdftotext of a PDF. w3m never opens a file itself: it gets the page's bytes.
// For      both adapters, where there is no display or the person wants text.
#ifndef OLH_TOOLS_VIEWERS_TEXT_VIEW_H
#define OLH_TOOLS_VIEWERS_TEXT_VIEW_H

#include <optional>

#include "trace.h"

namespace olh_viewers {

// Why there is text instead of a window; nothing when there is a window, of a viewer that needs no display at least.
enum class WhyText { kAsked, kNoDisplay };
std::optional<WhyText> reason_for_text(bool is_asked, bool needs_display);

// Both return an ExitStatus. Text that was asked for is paged on a terminal; otherwise it is only written, since the host
// may end before a pager would, and take the terminal back.
int show_page_as_text(const std::string& url, WhyText why, const Trace& trace);
int show_pdf_as_text(const std::string& file, const std::string& destination, WhyText why, const Trace& trace);

}  // namespace olh_viewers

#endif
