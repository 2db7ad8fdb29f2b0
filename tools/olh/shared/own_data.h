// What was installed, or built, together with this program.
//
// Knows    where it lies, seen from this program.
// Not      what is done with it.
// For      search_roots, doctor, and new, which copies pages from it.
#ifndef OLH_TOOLS_OWN_DATA_H
#define OLH_TOOLS_OWN_DATA_H

#include <filesystem>
#include <string>

namespace olh {

// The directory that holds "docs", the documentation root with the manual of this program; empty when it is not there.
std::filesystem::path own_data();

// That root; "" when it is not there.
std::string own_root();

}  // namespace olh

#endif
