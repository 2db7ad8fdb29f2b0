// The environment that a viewer gets: the host's, without what belongs to the host's own libraries.
//
// Knows    the variables with which a host finds its libraries and plugins, and that NAME_ORIG holds what a start script
//          has put aside. Session bus, locale, display and activation tokens stay. With a Wayland display alone the
//          type of the session is "wayland".
// For      child.
#ifndef OLH_TOOLS_VIEWERS_VIEWER_ENVIRONMENT_H
#define OLH_TOOLS_VIEWERS_VIEWER_ENVIRONMENT_H

#include "words.h"

namespace olh_viewers {

// NAME=VALUE each.
Words viewer_environment();

inline constexpr const char* kBusVariable = "DBUS_SESSION_BUS_ADDRESS";

// Whether a session bus can be found, from the variable or at its usual place.
bool has_session_bus();

// From here on this process and the viewers it starts use the session bus at that address.
void use_session_bus(const std::string& address);

}  // namespace olh_viewers

#endif
