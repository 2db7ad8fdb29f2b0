// The shape that every public entry point has.
//
// Made with the entry point's name and arguments, an EntryPoint does the first-use initialisation, writes the
// debug line and the trace log's call line; done() and failed() write the exit line and the result line and
// give the result back, so that an entry point ends with `return call.done(result)`.
//
// The exceptions: OlhVersion writes no result line, OlhHelpTest reads OLH_DEBUG before its entry line,
// OlhGetCurrentViewer and the entry points that do nothing write nothing at all.
//
// For      the entry points of this room.
#ifndef OLH_CLIENT_ENTRY_POINT_H
#define OLH_CLIENT_ENTRY_POINT_H

#include "one_thread.h"

namespace olh {

class EntryPoint {
 public:
  explicit EntryPoint(const char* name, const char* arg1 = nullptr, const char* arg2 = nullptr,
                      const char* arg3 = nullptr) noexcept;

  int done(int result) const noexcept;
  int failed(int result) const noexcept;
  int failed_invalid_argument(int result) const noexcept;

 private:
  int leave(const char* how, int result) const noexcept;

  [[no_unique_address, maybe_unused]] OneThread inside_;  // before all that the call does
  const char* name_;
};

}  // namespace olh

#endif
