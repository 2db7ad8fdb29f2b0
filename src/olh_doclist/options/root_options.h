// The options file of a documentation root.
//
// Knows    its name, and what it adds to the search path.
// Not      how it is written (option_file_write), how the host's reader of options files answers (option_file_read).
// For      this room.
#ifndef OLH_DOCLIST_ROOT_OPTIONS_H
#define OLH_DOCLIST_ROOT_OPTIONS_H

#include "path_list.h"

namespace olh {

// Its name, directly inside the root.
inline constexpr char kRootOptionsName[] = "qel_doc_options.ini";

// Appends the roots that the file names as alternates, then the root that holds the file, all with the file's
// overrides. A file that cannot be read or parsed adds nothing.
void add_roots_of_options(olh_docList& locator, const char* file, PathListEnd& end);

}  // namespace olh

#endif
