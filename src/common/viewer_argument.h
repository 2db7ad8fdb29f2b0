// What a viewer may get as an argument.
//
// Knows    which texts no viewer gets, whoever asked for them.
// Not      how an argument is written into a command (shell_quote).
// For      both viewer launchers, before anything else is done with a URL, a document or a destination.
#ifndef OLH_COMMON_VIEWER_ARGUMENT_H
#define OLH_COMMON_VIEWER_ARGUMENT_H

#include <string_view>

#include "bounded_text.h"

namespace olh {

// Whether a URL or a document's path may be an argument of its own: "" may; what a viewer would take for an option and what
// is as long as no path or URL can be may not. Control characters are handed on as they are.
inline bool may_reach_a_viewer(std::string_view argument) noexcept {
  return fits(argument) && !argument.starts_with('-');
}

}  // namespace olh

#endif
