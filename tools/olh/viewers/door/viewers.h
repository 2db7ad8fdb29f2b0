// Viewers: which programs show documents, who chose them, and how another one is chosen.
//
// For      main.cpp, and the rooms above: show, doctor. Nobody else sees another header of this room.
#ifndef OLH_TOOLS_VIEWERS_H
#define OLH_TOOLS_VIEWERS_H

#include "../chosen_viewer.h"
#include "../viewer_answers.h"
#include "../viewer_kind.h"

namespace olh {

class Verb;

void add_setup_command(const Verb& olh);
void add_viewers_command(const Verb& olh);

}  // namespace olh

#endif
