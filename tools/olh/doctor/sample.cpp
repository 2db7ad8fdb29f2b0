#include "sample.h"

#include <filesystem>

#include "shared.h"

namespace olh {

std::string sample_root() {
  const std::filesystem::path top = std::filesystem::path(own_program()).parent_path().parent_path();
  for (const char* place : {"share/olh/docs", "docs"}) {
    std::error_code failed;
    if (std::filesystem::exists(top / place / "htmldocs/olh_manual/index.htm", failed)) return (top / place).string();
  }
  return "";
}

}  // namespace olh
