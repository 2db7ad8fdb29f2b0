// Checking a documentation root.
//
// For      main.cpp. Nobody else sees another header of this room.
#ifndef OLH_TOOLS_CHECK_H
#define OLH_TOOLS_CHECK_H

namespace olh {

class Verb;

void add_check_command(const Verb& olh);

}  // namespace olh

#endif
