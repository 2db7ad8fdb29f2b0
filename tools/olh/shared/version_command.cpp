// olh version, and olh --version: of the package, and of the library's interface.
#include <nlohmann/json.hpp>

#include "olh/olh.h"
#include "shared.h"

namespace olh {

namespace {

int print(const bool& json) {
  if (json)
    say_json({{"package", OLH_PACKAGE_VERSION}, {"interface", OlhVersion()}});
  else
    say(version_line());
  return OLH_RESULT_OK;
}

}  // namespace

std::string version_line() { return std::string("olh " OLH_PACKAGE_VERSION " (interface ") + OlhVersion() + ")"; }

void add_version_command(const Verb& olh) {
  const Verb verb = olh.verb("version", "Print the version",
                             "Examples:\n  olh version\n  olh version --json\nExit code: 0, 64 wrong use.\n");
  add_json_option(verb, verb.action(print));
}

}  // namespace olh
