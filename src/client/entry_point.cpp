#include "entry_point.h"

#include "olh/support.h"
#include "trace_log.h"

namespace olh {

EntryPoint::EntryPoint(const char* name, const char* arg1, const char* arg2, const char* arg3) noexcept
    : inside_(name), name_(name) {
  OlhDocListInit();
  print_debug("%s\n", name);
  OlhLogHelp(name, arg1, arg2, arg3);
}

int EntryPoint::done(int result) const noexcept { return leave("done", result); }

int EntryPoint::failed(int result) const noexcept { return leave("failed", result); }

int EntryPoint::failed_invalid_argument(int result) const noexcept { return leave("failed: invalid arg", result); }

int EntryPoint::leave(const char* how, int result) const noexcept {
  print_debug("%s: %s (returned %d)\n", name_, how, result);
  OlhLogReturn(name_, result);
  return result;
}

}  // namespace olh
