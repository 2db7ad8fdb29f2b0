#include "environment.h"

#include <cstdlib>

namespace olh {

std::optional<std::string> variable(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

VariableForNow::VariableForNow(const char* name, const std::string& value) : name_(name), former_(variable(name)) {
  setenv(name_, value.c_str(), 1);
}

VariableForNow::~VariableForNow() {
  if (former_) {
    setenv(name_, former_->c_str(), 1);
  } else {
    unsetenv(name_);
  }
}

}  // namespace olh
