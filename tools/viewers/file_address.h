// The address of a file whose name holds what separates the parts of an address.
//
// Knows    which bytes of a file's name the library encodes, that it leaves "#", "?" and "%" as they are, and that the file
//          itself tells where its name ends.
// For      olh-browser.
#ifndef OLH_TOOLS_VIEWERS_FILE_ADDRESS_H
#define OLH_TOOLS_VIEWERS_FILE_ADDRESS_H

#include <string>

namespace olh_viewers {

// The address with the name of its file encoded, when the file is found only so; else the address as it is.
std::string mended_address(const std::string& url);

}  // namespace olh_viewers

#endif
