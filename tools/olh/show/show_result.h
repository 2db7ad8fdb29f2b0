// A result of a search on the screen: a topic in the browser, a page in the PDF reader.
//
// Knows    what a number of a result is, and what is said of a list that has no such result, or is old.
// Not      where the list comes from (search_hits, kept_results).
// For      search --open, and show.
#ifndef OLH_TOOLS_SHOW_RESULT_H
#define OLH_TOOLS_SHOW_RESULT_H

#include <cstddef>
#include <string>

#include "kept_results.h"
#include "olh/olh.h"
#include "showing.h"

namespace olh {

// The number of a result, from 1 to 999; 0 for every other text.
std::size_t result_number(const std::string& text);

// Shows it, or prints what would be sent. Returns the library's result.
int show_result(const ListedResults& results, std::size_t number, const ShowOptions& options,
                int display = OLH_DISPLAY_NORMAL);

}  // namespace olh

#endif
