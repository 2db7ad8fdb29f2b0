// What keeps help from the screen.
//
// For      main.cpp. Nobody else sees another header of this room.
#ifndef OLH_TOOLS_DOCTOR_H
#define OLH_TOOLS_DOCTOR_H

namespace olh {

class Verb;

void add_doctor_command(const Verb& olh);

}  // namespace olh

#endif
