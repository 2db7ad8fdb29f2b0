// Names that a manual may have in a documentation root.
//
// For      olh new, olh remove, olh-import.
#ifndef OLH_TOOLS_VIEWERS_MANUAL_NAME_H
#define OLH_TOOLS_VIEWERS_MANUAL_NAME_H

#include <string>

namespace olh_viewers {

// Why no manual can have this name, as a sentence for the parser of a command line; "" when one can.
std::string refusal_of_manual_name(const std::string& name);

}  // namespace olh_viewers

#endif
