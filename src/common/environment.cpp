#include "environment.h"

#include <sys/auxv.h>

#include <cstdlib>

namespace olh {

namespace {
constexpr const char* kSystemDirectories = "/bin:/usr/bin";
}

bool has_borrowed_rights() noexcept { return getauxval(AT_SECURE) != 0; }

const char* environment_variable(const char* name) noexcept { return secure_getenv(name); }

const char* program_directories() noexcept {
  return has_borrowed_rights() ? kSystemDirectories : environment_variable("PATH");
}

}  // namespace olh
