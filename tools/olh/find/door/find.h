// Finding: which roots there are, what they hold, and where a document is.
//
// For      main.cpp, and the rooms above: viewers, show, lists, check, doctor. Nobody else sees another header of this room.
#ifndef OLH_TOOLS_FIND_H
#define OLH_TOOLS_FIND_H

#include "../holdings.h"
#include "../locate.h"
#include "../places.h"
#include "../root_probe.h"
#include "../script_lists.h"
#include "../search_roots.h"

namespace olh {

class Verb;

void add_list_command(const Verb& olh);
void add_topics_command(const Verb& olh);
void add_test_command(const Verb& olh);
void add_where_command(const Verb& olh);
void add_paths_command(const Verb& olh);
void add_alt_path_command(const Verb& olh);

// Hidden: how `olh` asks itself (root_probe.h).
void add_probe_root_command(const Verb& olh);
void add_try_path_command(const Verb& olh);

}  // namespace olh

#endif
