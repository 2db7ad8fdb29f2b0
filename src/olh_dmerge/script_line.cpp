#include "script_line.h"

namespace olh {

std::optional<std::string_view> quoted(std::string_view line, int index) {
  for (;; --index) {
    const std::size_t open = line.find('"');
    if (open == std::string_view::npos) return std::nullopt;
    const std::size_t close = line.find('"', open + 1);
    if (close == std::string_view::npos) return std::nullopt;
    if (index == 0) return until_nul(line.substr(open + 1, close - open - 1));
    line.remove_prefix(close + 1);
  }
}

}  // namespace olh
