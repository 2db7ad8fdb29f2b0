// One program in two roles: under its own name the command, under any other name a recording viewer.
#include <cstdio>
#include <exception>

#include "commands.h"
#include "files.h"
#include "viewer.h"

int main(int argc, char** argv) {
  try {
    const std::string self = olh_viewers::own_program();
    if (self.substr(self.rfind('/') + 1) != "olh-recorder") return olh_recorder::play_viewer(self, argc, argv);
    return olh_recorder::run_command(std::vector<std::string>(argv + 1, argv + argc));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "olh-recorder: %s\n", error.what());
    return 1;
  }
}
