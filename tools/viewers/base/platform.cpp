#include "platform.h"

#include <fcntl.h>
#include <unistd.h>

#ifdef __APPLE__
#include <mach-o/dyld.h>

#include <cstdint>
#endif
#ifdef __FreeBSD__
#include <sys/types.h>

#include <sys/sysctl.h>

#include <cstddef>
#endif

#include "files.h"

namespace olh_viewers {

bool is_in_wsl() {
  const std::string kernel = content_of("/proc/sys/kernel/osrelease");
  return !variable("WSL_DISTRO_NAME").empty() || kernel.find("icrosoft") != std::string::npos;
}

bool is_of_windows(const std::string& program) {
  return program.ends_with(".exe") || program.ends_with("/wslview") || program.starts_with("/mnt/c/");
}

std::string this_program() {
#ifdef __APPLE__
  char name[4096] = "";
  std::uint32_t size = sizeof name;
  return _NSGetExecutablePath(name, &size) == 0 ? name : "";
#elif defined(__FreeBSD__)
  char name[4096] = "";
  const int what[] = {CTL_KERN, KERN_PROC, KERN_PROC_PATHNAME, -1};
  std::size_t size = sizeof name;
  return sysctl(what, 4, name, &size, nullptr, 0) == 0 ? name : "";
#else
  return "/proc/self/exe";
#endif
}

bool make_pipe(int (&ends)[2]) {
#ifdef __APPLE__
  if (pipe(ends) != 0) return false;
  for (const int end : ends) fcntl(end, F_SETFD, FD_CLOEXEC);
  return true;
#else
  return pipe2(ends, O_CLOEXEC) == 0;
#endif
}

void wait_for_signal([[maybe_unused]] const sigset_t& signal, const timespec& time) {
#ifdef __APPLE__
  constexpr timespec kGlance = {0, 10'000'000};
  nanosleep(time.tv_sec == 0 && time.tv_nsec < kGlance.tv_nsec ? &time : &kGlance, nullptr);
#else
  sigtimedwait(&signal, nullptr, &time);
#endif
}

}  // namespace olh_viewers
