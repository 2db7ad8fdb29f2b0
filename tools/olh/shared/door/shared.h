// What every verb of `olh` shares: how it declares itself and speaks, what it knows of its own process, and how it reads files.
//
// For      main.cpp, and the rooms above: find, viewers, show, lists, check, doctor. Nobody else sees another header of this room.
#ifndef OLH_TOOLS_SHARED_H
#define OLH_TOOLS_SHARED_H

#include "../debug_capture.h"
#include "../environment.h"
#include "../option_file.h"
#include "../output.h"
#include "../own_program.h"
#include "../root_text.h"
#include "../stream_in_memory.h"
#include "../verb.h"

namespace olh {

void add_version_command(const Verb& olh);
std::string version_line();

}  // namespace olh

#endif
