// The documentation search path and the alternate documentation location, as a host sets and reads them.
#include "bounded_text.h"
#include "entry_point.h"
#include "olh/support.h"

int OlhSetDocPath(const char* paths) noexcept {
  const olh::EntryPoint call("OlhSetDocPath", paths);
  if (olh::is_empty(paths) || !olh::fits(paths)) return call.done(OLH_RESULT_INVALID);
  SetOlhDocPath(paths);
  return call.done(OLH_RESULT_OK);
}

int OlhGetDocPath(char* path) noexcept {
  const olh::EntryPoint call("OlhGetDocPath");
  if (path == nullptr) return call.done(OLH_RESULT_INVALID);
  const char* first = GetOlhDocPath();
  if (olh::is_empty(first) || !olh::fits(first)) return call.done(OLH_RESULT_FAILED);
  olh::write_buffer(path, first);
  return call.done(OLH_RESULT_OK);
}

int OlhSetAltDocPath(const char* paths) noexcept {
  const olh::EntryPoint call("OlhSetAltDocPath", paths);
  return call.done(olh::is_empty(paths) ? static_cast<int>(OLH_RESULT_INVALID) : SetAltDocPath(paths));
}

int OlhGetAltDocPath(char* path) noexcept {
  const olh::EntryPoint call("OlhGetAltDocPath");
  return call.done(path == nullptr ? static_cast<int>(OLH_RESULT_INVALID) : GetAltDocPath(path));
}
