// Lists: a run of the generator, in earnest or on trial, and new roots.
//
// For      main.cpp, and the rooms above: check, doctor. Nobody else sees another header of this room.
#ifndef OLH_TOOLS_LISTS_H
#define OLH_TOOLS_LISTS_H

#include "../list_trial.h"
#include "../title_warnings.h"

namespace olh {

class Verb;

void add_dmerge_command(const Verb& olh);
void add_new_command(const Verb& olh);
void add_remove_command(const Verb& olh);
void add_prepare_root_command(const Verb& olh);

}  // namespace olh

#endif
