// One program in two roles: under its own name the command, under any other name a recording viewer.
#include "commands.h"
#include "files.h"
#include "viewer.h"

int main(int argc, char** argv) {
  const std::string self = olh_viewers::own_program();
  if (self.substr(self.rfind('/') + 1) != "olh-recorder") return olh_recorder::play_viewer(self, argc, argv);
  return olh_recorder::run_command(std::vector<std::string>(argv + 1, argv + argc));
}
