#include "versions.h"

#include "words_in_text.h"

namespace olh_index {

std::string version_in(std::string_view title) {
  std::string version;
  olh_search::each_token(title, [&version](std::string_view token) {
    const bool has_point = token.find('.') != std::string_view::npos;
    if (version.empty() && has_point && token.find_first_not_of("0123456789.") == std::string_view::npos)
      version = token;
  });
  return version;
}

bool names_version(std::string_view title, std::string_view version) {
  if (version.empty()) return false;
  const std::string named = version_in(title);
  return !named.empty() && (std::string(version) + ".").starts_with(named + ".");
}

}  // namespace olh_index
