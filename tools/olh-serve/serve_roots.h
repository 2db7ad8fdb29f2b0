// Which roots are served to a person, and where a document lies in them.
//
// Knows    that `olh`, beside this program, tells of the search path and of documents.
// For      main.
#ifndef OLH_TOOLS_SERVE_ROOTS_H
#define OLH_TOOLS_SERVE_ROOTS_H

#include <string>
#include <vector>

#include "serve_state.h"
#include "words.h"

namespace olh_serve {

// The directories, each with a token; all local roots of the search path when none is given.
std::vector<olh_viewers::ServedRoot> roots_to_serve(const std::vector<std::string>& directories);

// The address of a document, and a place in it, from the server at `address`; "" when it lies in none of the roots.
std::string address_of_document(const olh_viewers::Words& document, const std::vector<olh_viewers::ServedRoot>& roots,
                                const std::string& address);

}  // namespace olh_serve

#endif
