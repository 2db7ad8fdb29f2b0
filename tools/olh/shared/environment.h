// What `olh` reads from, and for a moment changes in, its own process.
//
// For      debug_capture and rehearsal, which set a variable around a call; whoever needs this program's own path.
#ifndef OLH_TOOLS_ENVIRONMENT_H
#define OLH_TOOLS_ENVIRONMENT_H

#include <array>
#include <optional>
#include <string>

#include "files.h"

namespace olh {

// The variables that bring documentation roots into a process.
inline constexpr const char* kSystemRoots = "OLH_SYSTEM_DOC_PATH";
inline constexpr std::array kRootVariables = {
    "QEL_OVERRIDE_DOC_PATH", "QEL_DOC_PATH", "QEL_PRODUCT_DOC_PATH", "TRV_HOME", "QEL_HOME", kSystemRoots};

// Gives an environment variable a value, and its former state back at the end of the scope.
class VariableForNow {
 public:
  VariableForNow(const char* name, const std::string& value);
  ~VariableForNow();
  VariableForNow(const VariableForNow&) = delete;
  VariableForNow& operator=(const VariableForNow&) = delete;

 private:
  const char* name_;
  std::optional<std::string> former_;
};

using olh_viewers::own_program;
using olh_viewers::variable;

}  // namespace olh

#endif
