// Names that a documentation root may have, and a manual in it.
//
// For      olh new, olh remove, olh-import.
#ifndef OLH_TOOLS_VIEWERS_MANUAL_NAME_H
#define OLH_TOOLS_VIEWERS_MANUAL_NAME_H

#include <string>

namespace olh_viewers {

// Why no manual can have this name, as a sentence for the parser of a command line; "" when one can.
std::string refusal_of_manual_name(const std::string& name);

// The same of a directory that is made a root, or changed.
std::string refusal_of_root(const std::string& root);

}  // namespace olh_viewers

#endif
