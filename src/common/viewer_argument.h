// What a viewer may get as an argument.
//
// Knows    which texts no viewer gets, whoever asked for them.
// Not      how an argument is written into a command (shell_quote).
// For      both viewer launchers, before anything else is done with a URL, a document or a destination.
#ifndef OLH_COMMON_VIEWER_ARGUMENT_H
#define OLH_COMMON_VIEWER_ARGUMENT_H

#include <algorithm>
#include <string_view>

#include "bounded_text.h"

namespace olh {

inline bool holds_control_character(std::string_view text) noexcept {
  return std::any_of(text.begin(), text.end(), [](unsigned char c) { return c < 0x20 || c == 0x7f; });
}

// Whether a URL or a document's path may be an argument of its own: "" may; what a viewer would take for an option,
// what holds a control character and what is as long as no path or URL can be may not.
inline bool may_reach_a_viewer(std::string_view argument) noexcept {
  return fits(argument) && !argument.starts_with('-') && !holds_control_character(argument);
}

}  // namespace olh

#endif
