// Texts of strangers in the forms in which they reach a page unharmed.
//
// Knows    that the list generator and the library take titles as they are, between double quotes, into scripts and into a
//          page; how a place in a page becomes an address.
// For      arranged_topics, manual_files.
#ifndef OLH_IMPORT_CARRIED_TEXT_H
#define OLH_IMPORT_CARRIED_TEXT_H

#include <string>
#include <string_view>

namespace olh_import {

// A text whole and on one line: every byte that is no UTF-8 as U+FFFD, every control character as a blank; cut behind a
// whole character at that many bytes.
std::string clean_text(std::string_view text, std::size_t most);

// The title of a manual: what means something in a script or in markup becomes a character that looks like it.
std::string carried_title(std::string_view title);
// The title of a topic, which no page takes as markup: its quotes and backslashes only.
std::string carried_topic_title(std::string_view title);

// Text in a page.
std::string as_markup(std::string_view text);

// "pages/library/os.path.html#os.path.join", percent-encoded.
std::string address_of(std::string_view page, std::string_view place);

}  // namespace olh_import

#endif
