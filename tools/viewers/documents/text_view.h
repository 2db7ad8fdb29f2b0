// A page or a PDF's place as text on the terminal.
//
// Knows    how w3m makes text of a page, its links numbered below it, and pdftotext of a PDF; that the text begins at the
//          place asked for. w3m never opens a file itself: it gets the page's bytes, and in the page's folder finds where
//          the links lead.
// For      both adapters, where there is no display or the person wants text.
#ifndef OLH_TOOLS_VIEWERS_TEXT_VIEW_H
#define OLH_TOOLS_VIEWERS_TEXT_VIEW_H

#include <optional>

#include "trace.h"

namespace olh_viewers {

// Why there is text instead of a window; nothing when there is a window, of a viewer that needs no display at least.
enum class WhyText { kAsked, kNoDisplay };
std::optional<WhyText> reason_for_text(bool is_asked, bool needs_display);

// Whether a page can be shown so at all.
bool can_show_page_as_text();

// Both return an ExitStatus. Text that does not fit on a terminal is paged when it was asked for, or when the caller waits
// for its end; otherwise it is only written, since the host may end before a pager would, and take the terminal back.
int show_page_as_text(const std::string& url, WhyText why, bool caller_waits, const Trace& trace);
int show_pdf_as_text(const std::string& file, const std::string& destination, WhyText why, const Trace& trace);

}  // namespace olh_viewers

#endif
