// Showing: a request carried out, or told in every detail without starting anything.
//
// For      main.cpp. Nobody else sees another header of this room.
#ifndef OLH_TOOLS_SHOW_H
#define OLH_TOOLS_SHOW_H

#include "../rehearsal.h"

namespace olh {

class Verb;

void add_show_command(const Verb& olh);
void add_search_command(const Verb& olh);
void add_portal_command(const Verb& olh);
void add_bookcase_command(const Verb& olh);

// Hidden: the numbers and titles that show would take, for the completion of the shells.
void add_kept_results_command(const Verb& olh);

}  // namespace olh

#endif
