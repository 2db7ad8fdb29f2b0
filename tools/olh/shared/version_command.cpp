// olh version: of the package, and of the library's interface.
#include <memory>
#include <nlohmann/json.hpp>

#include "olh/olh.h"
#include "output.h"
#include "shared.h"
#include "verb.h"

namespace olh {

namespace {

void print(bool json) {
  const std::string package = OLH_PACKAGE_VERSION;
  const std::string interface = OlhVersion();
  if (json) {
    say_json({{"package", package}, {"interface", interface}});
  } else {
    say("olh " + package + " (interface " + interface + ")");
  }
}

}  // namespace

void add_version_command(const Verb& olh) {
  const Verb verb = olh.verb("version", "Tell the version");
  const auto json = std::make_shared<bool>(false);
  add_json_option(verb, *json);
  verb.footer("Examples:\n  olh version\n  olh version --json\nExit code: 0, 64 wrong use.\n");
  verb.action([json] {
    print(*json);
    return OLH_RESULT_OK;
  });
}

}  // namespace olh
