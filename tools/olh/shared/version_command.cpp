// olh version: of the package, and of the library's interface.
#include <nlohmann/json.hpp>

#include "olh/olh.h"
#include "shared.h"

namespace olh {

namespace {

int print(const bool& json) {
  const std::string package = OLH_PACKAGE_VERSION;
  const std::string interface = OlhVersion();
  if (json) {
    say_json({{"package", package}, {"interface", interface}});
  } else {
    say("olh " + package + " (interface " + interface + ")");
  }
  return OLH_RESULT_OK;
}

}  // namespace

void add_version_command(const Verb& olh) {
  const Verb verb = olh.verb("version", "Print the version",
                             "Examples:\n  olh version\n  olh version --json\nExit code: 0, 64 wrong use.\n");
  add_json_option(verb, verb.action(print));
}

}  // namespace olh
