#include "display.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <string>

#include "files.h"
#include "platform.h"

namespace olh_viewers {

namespace {

bool answers(const std::string& socket_name, bool is_abstract) {
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  const std::size_t offset = is_abstract ? 1 : 0;
  if (socket_name.size() + offset >= sizeof address.sun_path) return false;
  std::memcpy(address.sun_path + offset, socket_name.data(), socket_name.size());
  const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + offset + socket_name.size());
  const int fd = socket(AF_UNIX, SOCK_STREAM, 0);
  if (fd < 0) return false;
  fcntl(fd, F_SETFD, FD_CLOEXEC);
  fcntl(fd, F_SETFL, O_NONBLOCK);
  // One that has as many callers waiting as it can hold is there all the same.
  const bool connected = connect(fd, reinterpret_cast<const sockaddr*>(&address), size) == 0 || errno == EAGAIN;
  close(fd);
  return connected;
}

// ":N", ":N.S", "unix:N" are displays of this machine. One elsewhere is taken at its word.
bool x_display_answers(const std::string& display) {
  const std::size_t colon = display.rfind(':');
  if (colon == std::string::npos) return false;
  const std::string host = display.substr(0, colon);
  if (!host.empty() && host != "unix") return true;
  const std::string number = display.substr(colon + 1, display.find('.', colon) - colon - 1);
  const std::string socket_name = "/tmp/.X11-unix/X" + number;
  return answers(socket_name, true) || answers(socket_name, false);
}

bool wayland_display_answers(const std::string& display) {
  return answers(display.starts_with('/') ? display : variable("XDG_RUNTIME_DIR") + "/" + display, false);
}

}  // namespace

// The window system of macOS has no variable of its own.
bool has_display() {
  if (kIsMacos && variable("SSH_CONNECTION").empty()) return true;
  const std::string wayland = variable("WAYLAND_DISPLAY");
  const std::string x = variable("DISPLAY");
  return (!wayland.empty() && wayland_display_answers(wayland)) || (!x.empty() && x_display_answers(x));
}

bool is_same_display(std::string_view one, std::string_view other) {
  const auto without_screen = [](std::string_view display) {
    return display.substr(0, display.find('.', display.rfind(':')));
  };
  return without_screen(one) == without_screen(other);
}

}  // namespace olh_viewers
