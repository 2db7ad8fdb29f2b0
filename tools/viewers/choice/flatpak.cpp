#include "flatpak.h"

#include <algorithm>

#include "desktop_default.h"
#include "files.h"

namespace olh_viewers {

std::string flatpak_application(const Words& words) {
  const auto run = std::find(words.begin(), words.end(), "run");
  if (run == words.end()) return "";
  const auto found =
      std::find_if(run + 1, words.end(), [](const std::string& word) { return !word.starts_with('-'); });
  return found == words.end() ? "" : *found;
}

//   file below an installation                says
//   app/ID/current/active/metadata            shared=network;ipc;
//   overrides/global, then overrides/ID       shared=!network;
// The user's overrides come last.
bool may_use_network(const std::string& application) {
  const std::string data = variable("XDG_DATA_HOME");
  const std::string own = data.empty() ? path_in(variable("HOME"), ".local/share/flatpak") : path_in(data, "flatpak");
  const std::string system = "/var/lib/flatpak";
  const std::string metadata = "app/" + application + "/current/active/metadata";
  std::string text = content_of(path_in(own, metadata));
  if (text.empty()) text = content_of(path_in(system, metadata));
  if (text.empty()) return true;
  bool is_shared = false;
  const auto read = [&is_shared](const std::string& permissions) {
    for (const std::string& what : pieces_of(value_in(permissions, "Context", "shared"), ';'))
      if (what == "network" || what == "!network") is_shared = what == "network";
  };
  read(text);
  for (const std::string& installation : {system, own})
    for (const std::string& name : {std::string("global"), application})
      read(content_of(path_in(installation, "overrides/" + name)));
  return is_shared;
}

}  // namespace olh_viewers
