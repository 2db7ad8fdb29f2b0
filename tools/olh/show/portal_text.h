// What a portal shows, as text for a terminal without a display.
//
// Knows    which lists of a root hold a portal's documents, and how they are laid out in columns.
// Not      when text is wanted (showing).
// For      portal.
#ifndef OLH_TOOLS_PORTAL_TEXT_H
#define OLH_TOOLS_PORTAL_TEXT_H

#include <string>

namespace olh {

// The documents of a portal; of the main page ("") all portals and documents of the root. "" when nothing is listed.
std::string portal_as_text(const std::string& root, const std::string& portal);

}  // namespace olh

#endif
