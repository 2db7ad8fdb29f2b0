#include "viewer_environment.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string_view>

#include "files.h"
#include "platform.h"

namespace olh_viewers {

namespace {

constexpr std::array<std::string_view, 9> kOfTheHost = {"LD_LIBRARY_PATH",   "LD_PRELOAD",
                                                        "QT_PLUGIN_PATH",    "QT_QPA_PLATFORM_PLUGIN_PATH",
                                                        "GTK_PATH",          "GDK_PIXBUF_MODULE_FILE",
                                                        "GIO_EXTRA_MODULES", "PYTHONHOME",
                                                        "PYTHONPATH"};

constexpr std::string_view kSessionType = "XDG_SESSION_TYPE";

bool is_of_the_host(std::string_view name) {
  return std::find(kOfTheHost.begin(), kOfTheHost.end(), name) != kOfTheHost.end();
}

// Where a login without the variable has its bus all the same; "" when it has none.
std::string usual_bus() {
  const std::string socket = "/run/user/" + std::to_string(getuid()) + "/bus";
  struct stat status = {};
  return stat(socket.c_str(), &status) == 0 && S_ISSOCK(status.st_mode) ? "unix:path=" + socket : "";
}

}  // namespace

Words viewer_environment() {
  Words result;
  // Chromium looks for an X display unless the session says what it is; one that was begun on a console says "tty".
  const bool is_wayland_alone = variable("DISPLAY").empty() && !variable("WAYLAND_DISPLAY").empty();
  for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
    const std::string_view text = *entry;
    const std::string_view name = text.substr(0, text.find('='));
    if (!is_of_the_host(name) && !(is_wayland_alone && name == kSessionType)) result.emplace_back(text);
  }
  if (is_wayland_alone) result.push_back(std::string(kSessionType) + "=wayland");
  for (const std::string_view name : kOfTheHost) {
    const std::string before = variable((std::string(name) + "_ORIG").c_str());
    if (!before.empty()) result.push_back(std::string(name) + "=" + before);
  }
  if (variable(kBusVariable).empty() && !usual_bus().empty())
    result.push_back(std::string(kBusVariable) + "=" + usual_bus());
  return result;
}

bool has_session_bus() { return !variable(kBusVariable).empty() || !usual_bus().empty(); }

void use_session_bus(const std::string& address) { setenv(kBusVariable, address.c_str(), 1); }

}  // namespace olh_viewers
