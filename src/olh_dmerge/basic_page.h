// The portals' basic page: all documents in one table, for browsers without scripts.
//
// Knows    the template's two marker lines and the rows of the table.
// For      the writer of the library lists, as its last act.
#ifndef OLH_DMERGE_BASIC_PAGE_H
#define OLH_DMERGE_BASIC_PAGE_H

#include <string>
#include <string_view>

#include "listed_entry.h"

namespace olh {

// Writes the page. When there is no template, or the page cannot be written, the old page stays, silently.
// `text` is memory for it: what it holds is lost.
void write_basic_page(std::string_view root, const Entries& entries, std::string& text);

}  // namespace olh

#endif
