#include "platform.h"

#include "files.h"

namespace olh_viewers {

bool is_in_wsl() {
  const std::string kernel = content_of("/proc/sys/kernel/osrelease");
  return !variable("WSL_DISTRO_NAME").empty() || kernel.find("icrosoft") != std::string::npos;
}

bool is_of_windows(const std::string& program) {
  return program.ends_with(".exe") || program.ends_with("/wslview") || program.starts_with("/mnt/c/");
}

}  // namespace olh_viewers
