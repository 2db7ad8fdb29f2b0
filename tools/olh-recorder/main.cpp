// One program in two roles: under its own name the command, under any other name a recording viewer.
#include "commands.h"
#include "records.h"
#include "viewer.h"

int main(int argc, char** argv) {
  const std::string self = olh_recorder::own_path();
  if (self.substr(self.rfind('/') + 1) != "olh-recorder") return olh_recorder::play_viewer(self, argc, argv);
  return olh_recorder::run_command(std::vector<std::string>(argv + 1, argv + argc));
}
