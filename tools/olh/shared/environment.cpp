#include "environment.h"

#include <cstdlib>

namespace olh {

VariableForNow::VariableForNow(const char* name, const std::string& value) : name_(name) {
  if (const char* former = std::getenv(name_)) former_ = former;
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
