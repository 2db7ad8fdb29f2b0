// olh version: of the package, and of the library's interface.
#include <memory>
#include <nlohmann/json.hpp>

#include "commands.h"
#include "olh/olh.h"
#include "output.h"

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

CLI::App* add_version_command(CLI::App& app, int& exit_code) {
  CLI::App* verb = app.add_subcommand("version", "Tell the version");
  const auto json = std::make_shared<bool>(false);
  add_json_option(*verb, *json);
  verb->footer("Examples:\n  olh version\n  olh version --json\n");
  verb->callback([json, &exit_code] {
    print(*json);
    exit_code = OLH_RESULT_OK;
  });
  return verb;
}

}  // namespace olh
